// The menu of the real widget, asked for at a bad moment.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { join } from 'node:path';
import { test } from 'node:test';

import { Desktop, until, windows } from './Desktop.mjs';
import { TrayHost } from './TrayHost.mjs';

test('a menu that opens while another program has the keyboard to itself goes by Escape', async (context) => {
  const desktop = new Desktop();
  const host = new TrayHost();
  const widget = spawn(join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-launch'), { stdio: ['ignore', 'inherit', 'inherit'] });
  context.after(() => widget.kill('SIGKILL'));
  await until('the item', () => host.hasItem());
  const seen = () => windows('--class', '^kestrelbay$');
  const panel = await until('the panel', () => seen()[0]);
  const menu = () => seen().find(({ id }) => id !== panel.id);
  await host.click('View', 'Window');
  await until('the panel as a window', () => seen().length === 1);

  desktop.leave();
  desktop.clickHere(3); // the window manager's own menu
  await desktop.pause();
  await host.activate();
  await until('the menu', menu);
  await until('no menu', async () => {
    desktop.press('Escape');
    await desktop.pause();
    return !menu();
  });

  widget.kill('SIGTERM');
  assert.deepEqual(await once(widget, 'exit'), [0, null]);
  await host.close();
});
