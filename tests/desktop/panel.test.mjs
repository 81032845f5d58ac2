// The real widget with a sample home on a real display, used by mouse and by keyboard.
//
// One panel serves all tests, which build on one another; each leaves it wide, with days shown.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { checkout, run } from '../companions/scratch.mjs';
import { Desktop, until, windows } from './Desktop.mjs';

const desktop = new Desktop();
let widget;
let ended;

before(async () => {
  const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), homedir(), '--small']);
  assert.equal(made.status, 0, made.stderr);
  widget = spawn(join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-launch'), {
    env: { ...process.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON: '1' },
    stdio: ['ignore', 'inherit', 'inherit'],
  });
  ended = once(widget, 'exit');
  await desktop.meet('kestrelbay');
  // Until the transcripts are indexed there is a note in place of the figures.
  await desktop.starting('Today, $');
});

after(() => {
  if (widget?.exitCode === null) widget.kill('SIGKILL');
});

// The chart's bars and the sessions are lists for a screen reader; the tabs above have the same names.
const isList = ({ role }) => role === 'list';
const panel = () => windows('--name', '^Kestrelbay$')[0];
const chart = () => desktop.called('History', isList);
const list = () => desktop.called('Sessions', isList);
const clickTab = async (name) => desktop.click((await desktop.called(name, (found) => !isList(found))).frame);

/** Goes on by Tab until the keyboard is there. */
async function tabTo(element) {
  for (let presses = 0; presses < 15 && !element.isFocused; ++presses) {
    desktop.press('Tab');
    await desktop.pause();
  }
  assert.ok(element.isFocused, `"${element.name}" cannot be reached by Tab`);
}

/** What the screen shows of a thing after `act`, which must have changed it. */
async function changed(frame, act) {
  const earlier = await desktop.still(frame);
  await act();
  await until('another picture', () => desktop.picture(frame) !== earlier);
  return desktop.still(frame);
}

/** Waits for a picture that was there before. */
const again = (frame, picture) => until('the earlier picture', () => desktop.picture(frame) === picture);

test('the statistics button makes the panel wide', async () => {
  const narrow = await desktop.starting('Today, $');
  const { width } = narrow.frame;
  desktop.click((await desktop.called('Statistics')).frame);
  await desktop.starting('Last month, $');
  await chart();
  assert.ok((await desktop.starting('Today, $')).frame.width > width);
});

test('a bar under the pointer shows its tip, and loses it', async () => {
  const element = await chart();
  desktop.leave();
  await changed(element.frame, () => desktop.point(element.frame, 0.4, 0.5));
  await until('the tip in words', () => / tokens$/.test(element.description));
  desktop.leave();
  await until('no tip', () => element.description === '');
});

test('the menu opens over a button whose tip is shown', async () => {
  const { frame } = await desktop.called('Hide');
  const menus = () => windows('--class', '^kestrelbay$').length - 1;
  for (const press of [() => desktop.clickHere(3), () => desktop.clickWith('ctrl')]) {
    desktop.leave();
    desktop.point(frame);
    await desktop.showing('the tip', ({ role }) => role === 'tool tip');
    press();
    await until('the menu', () => menus() === 1);
    desktop.press('Escape');
    await until('no menu', () => menus() === 0);
  }
});

test('the panel folds by a double click, but not by one on the chart', async () => {
  const element = await chart();
  const { width } = panel();
  const top = () => ({ ...panel(), height: 16 });
  for (const [where, isWide] of [[() => element.frame, true], [top, false], [top, true]]) {
    desktop.point(where());
    desktop.clickHere();
    desktop.clickHere();
    await pause(600); // in which nothing may happen
    await until(isWide ? 'the wide panel' : 'the compact panel', () => (panel().width === width) === isWide);
  }
});

/** What the chart says of the bar that is chosen after `act`, which must have chosen another one. */
async function chosen(element, act) {
  const earlier = element.description;
  await act();
  return until('another bar', () => element.description !== earlier && element.description);
}

const chosenAgain = (element, words) => until(`"${words}" again`, () => element.description === words);

test('the wheel scrolls back and forth', async () => {
  const element = await chart();
  const newest = await chosen(element, () => desktop.point(element.frame, 0.4, 0.5));
  await chosen(element, () => desktop.turnWheel(3));
  desktop.turnWheel(-3);
  await chosenAgain(element, newest);
});

test('a click on a tab shows what it says', async () => {
  for (const [tab, period] of [['Weeks', 'This week · '], ['Months', 'This month · '], ['Days', 'Today · ']]) {
    await clickTab(tab);
    await desktop.starting(period);
  }
  await clickTab('Sessions');
  await list();
  await clickTab('Days');
  await chart();
});

test('the chart is paged by keys', async () => {
  desktop.leave();
  const element = await chart();
  await tabTo(element);
  const newest = await chosen(element, () => desktop.press('End'));
  await chosen(element, () => desktop.press('Left'));
  await chosen(element, () => desktop.press('Prior'));
  const oldest = await chosen(element, () => desktop.press('Home'));
  await chosen(element, () => desktop.press('Next'));
  desktop.press('Home');
  await chosenAgain(element, oldest);
  desktop.press('End');
  await chosenAgain(element, newest);
});

test('the other assistant has figures of its own', async () => {
  desktop.click((await desktop.called('Codex')).frame);
  await desktop.starting('Today, $0.00');
  desktop.click((await desktop.called('Claude')).frame);
  await desktop.showing('figures', ({ name }) => /^Today, \$(?!0\.00)/.test(name));
});

test('the sessions are gone through by keys', async () => {
  await clickTab('Sessions');
  desktop.leave();
  const element = await list();
  await tabTo(element);
  const { frame } = element;
  const first = await desktop.still(frame);
  await changed(frame, () => desktop.press(...Array(12).fill('Down')));
  desktop.press(...Array(12).fill('Up'));
  await again(frame, first);
  await clickTab('Days');
});

test('Ctrl+Q ends the program the ordinary way', async () => {
  desktop.press('ctrl+q');
  assert.deepEqual(await ended, [0, null]);
});
