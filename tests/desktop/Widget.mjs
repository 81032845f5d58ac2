// The real widget, started and ended by the tests of one file, and where its windows are.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, readFileSync, rmSync } from 'node:fs';
import { homedir } from 'node:os';
import { join } from 'node:path';

import { checkout, run } from '../companions/scratch.mjs';
import { Desktop, until, windows } from './Desktop.mjs';

export const SCREEN = { width: 1280, height: 900 };
export const BAR = 24; // pixels, the height of the tray's bar
const file = join(homedir(), '.kestrelbay/state.json');

export const desktop = new Desktop();
/** The widget's process, and how it ends. */
export const running = {};
const others = []; // processes

/** Leaves transcripts to be counted. */
export function furnish() {
  const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), homedir(), '--small']);
  assert.equal(made.status, 0, made.stderr);
}

export async function start() {
  running.process = spawn(join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-launch'), {
    env: { ...process.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON: '1' },
    stdio: ['ignore', 'inherit', 'inherit'],
  });
  running.ended = once(running.process, 'exit');
  await desktop.listen('kestrelbay');
}

export async function end() {
  running.process.kill('SIGTERM');
  assert.deepEqual(await running.ended, [0, null]);
}

/** Starts it with nothing remembered. */
export async function startAnew() {
  if (running.process?.exitCode === null) await end();
  rmSync(file, { force: true });
  desktop.goTo(0);
  desktop.leave();
  await start();
}

export function other(program, ...words) {
  const process = spawn(program, words, { stdio: ['ignore', 'pipe', 'ignore'] });
  others.push(process);
  return process;
}

export function stopAll() {
  for (const process of [running.process, ...others]) if (process?.exitCode === null) process.kill('SIGKILL');
}

export const state = () => (existsSync(file) ? JSON.parse(readFileSync(file, 'utf8')) : {});
export const ours = () => windows('--class', '^kestrelbay$');
export const panel = () => windows('--name', '^Kestrelbay$').find(({ width }) => width > BAR);
export const icon = () => ours().find(({ width }) => width < BAR);
export const place = ({ x, y }) => `${x}, ${y}`;
export const isNear = (one, another) => Math.abs(one - another) <= 1;

export const shown = () => until('the widget shown', () => state().hidden === false && panel());
export const hidden = () => until('the widget hidden', () => state().hidden === true && !panel());
export const standsAt = (x, y) => until(`the panel at ${x}, ${y}`, () => {
  const frame = panel();
  return frame && isNear(frame.x, x) && isNear(frame.y, y) && frame;
});
