// The real widget on two monitors with a bar at the bottom of the left one, which is no tray that tells
// where its items are.

import { execFileSync } from 'node:child_process';
import { after, before, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { until, windows } from './Desktop.mjs';
import { TrayHost } from './TrayHost.mjs';
import {
  BAR, desktop, furnish, hidden, isNear, other, panel, running, shown, startAnew, stopAll,
} from './Widget.mjs';

const HEIGHT = 600; // of the display
const MIDDLE = 640;
let host;
let bar;

before(async () => {
  furnish();
  for (const [name, left, output] of [['left', 0, 'screen'], ['right', MIDDLE, 'none']]) {
    execFileSync('xrandr', ['--setmonitor', name, `${MIDDLE}/170x${HEIGHT}/160+${left}+0`, output]);
  }
  bar = other('xev', '-geometry', `${MIDDLE}x${BAR}+0+${HEIGHT - BAR}`);
  const { id } = await until('the bar', () => windows('--name', '^Event Tester$')[0]);
  execFileSync('xprop', ['-id', String(id), '-f', '_NET_WM_STRUT_PARTIAL', '32c', '-set', '_NET_WM_STRUT_PARTIAL',
    `0,0,0,${BAR},0,0,0,0,0,0,0,${MIDDLE - 1}`]);
  host = new TrayHost();
  await startAnew();
});

after(async () => {
  stopAll();
  await host.close();
});

const moveTo = (x, y) => desktop.point({ x, y, width: 0, height: 0 });

/** Waits until the panel is there, as far above the bottom of what it may take as it always is. */
const standsAbove = (bottom, x) => until(`the panel above ${bottom}`, () => {
  const frame = panel();
  return frame && isNear(frame.x, x(frame)) && isNear(frame.y + frame.height, bottom - 6) && frame;
});

test('it hangs at the end of the bar where the pointer was, and stays there', async () => {
  const atEnd = ({ width }) => MIDDLE - 6 - width;
  await standsAbove(HEIGHT - BAR, atEnd);
  moveTo(MIDDLE + 300, 300);
  await pause(4000); // two heartbeats
  await standsAbove(HEIGHT - BAR, atEnd);
});

test('it leaves the bar free that was clicked, as long as that is there', async () => {
  await host.activate();
  await hidden();
  moveTo(320, HEIGHT - 4);
  await host.activate();
  await shown();
  const overPlace = ({ width }) => 320 - width / 2;
  await standsAbove(HEIGHT - BAR, overPlace);
  bar.kill();
  await standsAbove(HEIGHT, overPlace);
});

test('it is no higher than the monitor, with the list of sessions all the less', async () => {
  await host.click('Statistics');
  desktop.click((await desktop.called('Sessions')).frame);
  const isThere = ({ x, y, width, height }) => x >= 0 && y >= 0 && x + width <= MIDDLE && y + height <= HEIGHT;
  await until('the sessions', async () => (await desktop.called('Sessions', ({ role }) => role === 'list')).frame.height > 100);
  await until('the panel on its monitor', () => isThere(panel()));
  running.process.kill('SIGTERM');
  await running.ended;
});
