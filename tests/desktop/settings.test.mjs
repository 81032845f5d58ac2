// The settings of the real widget, by mouse and by keyboard alone, with a script in the place of the
// sync script. The tests build on one another.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { copyFileSync, existsSync, mkdirSync, readFileSync } from 'node:fs';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

import { checkout } from '../companions/scratch.mjs';
import { Desktop, until, windows } from './Desktop.mjs';

const data = join(homedir(), '.kestrelbay');
const autostart = join(homedir(), '.config/autostart/dev.harrowgate.kestrelbay.desktop');
const desktop = new Desktop();
let widget;
let ended;

const read = (name) => (existsSync(join(data, name)) ? readFileSync(join(data, name), 'utf8') : '');
const state = () => JSON.parse(read('state.json') || '{}');
const calls = () => read('standin-calls').split('\n');
const settings = (title) => until(`the settings' "${title}"`, () => windows('--name', `^${title}`)[0]);
const click = async (name, fits) => desktop.click((await desktop.called(name, fits)).frame);

async function type(text) {
  for (const character of text) desktop.press(character === '-' ? 'minus' : character);
  await desktop.pause();
}

/** Goes on by Tab until the keyboard is on what has this name; a field with dots has only its placeholder. */
async function tabTo(name) {
  const isIt = (element) => !['label', 'panel'].includes(element.role)
    && (element.name || element.description) === name;
  const element = await desktop.showing(`"${name}"`, isIt);
  for (let presses = 0; presses < 25 && !element.isFocused; ++presses) {
    desktop.press('Tab');
    await desktop.pause();
  }
  assert.ok(element.isFocused, `"${name}" cannot be reached by Tab`);
}

before(async () => {
  mkdirSync(data, { recursive: true });
  copyFileSync(join(checkout, 'tests/widget/scripts/usage-sync-standin.mjs'), join(data, 'usage-sync.mjs'));
  widget = spawn(join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-launch'), {
    env: { ...process.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON: '1' },
    stdio: ['ignore', 'inherit', 'inherit'],
  });
  ended = once(widget, 'exit');
  await desktop.meet('kestrelbay');
});

after(() => {
  if (widget?.exitCode === null) widget.kill('SIGKILL');
});

test('they open once, by the button, and close by Escape and Ctrl+W', async () => {
  for (const key of ['Escape', 'ctrl+w']) {
    await click('Settings');
    const { id } = await settings('General');
    await click('Settings', ({ role }) => role === 'push button');
    await until('the keyboard', () => desktop.keyboard() === id);
    assert.equal(windows('--name', 'General').length, 1);
    desktop.press(key);
    await until('no settings', () => windows('--name', 'General').length === 0);
  }
});

test('options are set by mouse and by keyboard, and the language shows at once', async () => {
  await click('Settings');
  await settings('General');
  await click('Start at login');
  await until('the entry', () => existsSync(autostart));
  await tabTo('Check for updates');
  desktop.press('space');
  await until('the option', () => state().updateCheck === false);
  await tabTo('Language');
  desktop.press('Return');
  await desktop.called('Deutsch');
  desktop.press('End', 'Up', 'Return'); // whichever that is, it is another
  await until('another language', () => state().language);
  const { language } = state();
  await desktop.called(JSON.parse(read('i18n.json'))[language].settingsGeneral);
  desktop.press('Return', 'Home', 'Return');
  await settings('General');
});

test('this device is named, secured and linked by keyboard alone', async () => {
  desktop.press('ctrl+Tab');
  await settings('Data');
  await tabTo('Name');
  await type('box');
  desktop.press('Return');
  await until('the name', () => calls().includes('rename|box<'));
  await until('the keyboard back', async () => (await desktop.called('Name', ({ role }) => role === 'text')).isFocused);
  await tabTo('6 characters or more');
  await type('secret7');
  desktop.press('Return');
  await until('the password', () => calls().includes('password<secret7'));
  await desktop.called('Remove');
  desktop.click((await desktop.called('Name', ({ role }) => role === 'text')).frame);
  await click('Change');
  await type('secret8');
  desktop.press('Return');
  await until('the other password, and no other name', () => calls().includes('password<secret8'));
  desktop.click((await desktop.called('Name', ({ role }) => role === 'text')).frame);
  await click('Remove');
  await desktop.called('Set');
  await type('secret9');
  desktop.press('Return');
  await until('a password again, and no other name', () => calls().includes('password<secret9'));
  await tabTo('Device ID');
  await type('WXYZ-WXYZ-WXYZ');
  desktop.press('Tab');
  await type('abc');
  desktop.press('Return');
  await desktop.called('No device with this ID and password.');
  await type('defg');
  desktop.press('Return');
  await until('the link', () => calls().includes('link|WXYZ-WXYZ-WXYZ<abcdefg'));
  await desktop.called('Laptop');
});

test('a linked device is left out and unlinked, and history goes only once it is confirmed', async () => {
  await click('Laptop');
  await until('it left out', () => calls().includes('include|WXYZ-WXYZ-WXYZ|off<'));
  await until('rest', () => JSON.parse(read('sync-status.json')).links[0].enabled === false);
  await click('Unlink');
  await until('no link', () => JSON.parse(read('sync-status.json')).links.length === 0);
  await tabTo('Delete history…');
  desktop.press('space');
  await desktop.called('Delete the history?');
  desktop.press('Return'); // cancels
  await tabTo('Delete history…');
  assert.ok(!calls().includes('delete-history<'));
  desktop.press('space');
  await desktop.called('Delete the history?');
  await tabTo('Delete');
  desktop.press('Return');
  await until('the deletion', () => calls().includes('delete-history<'));
  widget.kill('SIGTERM');
  assert.deepEqual(await ended, [0, null]);
});
