// The real widget on three desktops: with a tray that takes icons as windows, with one that asks for
// them over the bus, and with none. Each starts with nothing remembered; the tests of one desktop
// build on one another.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, readdirSync, renameSync } from 'node:fs';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { until, windows } from './Desktop.mjs';
import { TrayHost } from './TrayHost.mjs';
import {
  BAR, SCREEN, desktop, end, furnish, hidden, icon, isNear, other, ours, panel, place, running, shown, standsAt, start,
  startAnew, state, stopAll,
} from './Widget.mjs';

const autostart = join(homedir(), '.config/autostart/dev.harrowgate.kestrelbay.desktop');
const codex = join(homedir(), '.codex');

/** Waits until the panel is in the corner where a free one starts. */
const standsInCorner = () => until('the panel in the corner', () => {
  const frame = panel();
  return frame && isNear(frame.x + frame.width, SCREEN.width - 12) && isNear(frame.y + frame.height, SCREEN.height - 12);
});

/** Waits until the panel hangs under the icon, and returns how far it is from the right edge. */
const hangs = () => until('the panel under the icon', () => {
  const [frame, item] = [panel(), icon()];
  if (!frame || !item || frame.y !== BAR + 6) return undefined;
  const right = SCREEN.width - frame.x - frame.width;
  const isCentred = isNear(frame.x + frame.width / 2, item.x + item.width / 2);
  return (isCentred || right === 6) && { isCentred, right };
});

before(furnish);
after(stopAll);

describe('with a tray of icons', () => {
  let tray;
  let neighbour; // a window of another program

  function startTray(align) {
    tray = other('trayer', '--edge', 'top', '--align', align, '--widthtype', 'request', '--height', String(BAR),
      '--SetDockType', 'true', '--SetPartialStrut', 'true');
  }

  async function endTray() {
    tray.kill('SIGKILL');
    await once(tray, 'exit');
  }

  before(async () => {
    startTray('right');
    other('xev');
    neighbour = await until('a window', () => windows('--name', '^Event Tester$')[0]);
    desktop.activate(neighbour);
    await startAnew();
  });

  after(endTray);

  test('a click on the icon shows the panel under it, without the keyboard, and hides it', async () => {
    await shown();
    assert.deepEqual(await hangs(), { isCentred: false, right: 6 });
    desktop.click(icon());
    await hidden();
    desktop.click(icon());
    await shown();
    await hangs();
    assert.equal(desktop.keyboard(), neighbour.id);
  });

  for (const [what, act] of [
    ['Escape', async () => {
      desktop.click({ ...panel(), height: 16 });
      await until('the keyboard', () => desktop.keyboard() === panel().id);
      desktop.press('Escape');
    }],
    ['another desktop', () => desktop.goTo(1)],
    ['going back', () => desktop.goTo(0)],
    ['a press elsewhere', () => desktop.click(neighbour)],
  ]) {
    test(`${what} hides the panel`, async () => {
      if (!panel()) desktop.click(icon());
      await shown();
      await hangs();
      await act();
      await hidden();
    });
  }

  test('a restarted tray has the icon again, and the panel hangs from it', async () => {
    await endTray();
    startTray('center');
    await until('the icon at rest', async () => {
      const before = icon();
      await pause(300);
      return before && icon() && place(before) === place(icon());
    });
    desktop.click(icon());
    await shown();
    assert.ok((await hangs()).isCentred);
  });

  test('without a tray for long, the panel is a window until there is one', async () => {
    await endTray();
    await standsInCorner();
    assert.equal(state().view, 'icon');
    startTray('right');
    assert.equal((await hangs()).right, 6);
  });

  test('a right click makes room for the menu, where the view is picked', async () => {
    desktop.click(icon(), 3);
    await hidden();
    await until('the menu', () => ours().some(({ height }) => height > BAR));
    for (const key of ['Down', 'Down', 'Down', 'Down', 'Right', 'Down', 'Return']) {
      await pause(100);
      desktop.press(key);
    }
    await standsInCorner();
    assert.equal(state().view, 'window');
  });

  test('a free window stays on its desktop, and where it was dragged, also after a restart', async () => {
    const { x, y } = panel();
    await desktop.drag(panel(), -300, -200);
    const { left, top } = await until('its place remembered', () => state().left < x - 200 && state().top < y - 100 && state());
    await standsAt(left, top);
    desktop.goTo(1);
    await pause(500);
    desktop.goTo(0);
    await standsAt(left, top);
    assert.equal(state().hidden, false);
    await end();
    await start();
    await standsAt(left, top);
  });
});

describe('with a tray on the bus', () => {
  let host;
  const told = () => ({ ...state(), autostart: existsSync(autostart) });

  before(async () => {
    host = new TrayHost();
    await startAnew();
    await until('the item', () => host.hasItem());
    await host.menu(); // as trays ask at any time, and show nothing
  });

  after(() => host.close());

  test('the item tells the limits', async () => {
    await until('the limits', async () => (await host.item()).toolTip === 'Claude · 5 hours 37% · Week 64%');
  });

  test('a click on the item hides the panel and shows it', async () => {
    await shown();
    await host.activate();
    await hidden();
    await host.activate();
    await shown();
  });

  test('hiding fades, though the pointer rests', async () => {
    const spy = other('xprop', '-id', String(panel().id), '-spy', '_NET_WM_WINDOW_OPACITY');
    let told = '';
    spy.stdout.on('data', (bytes) => { told += bytes; });
    await until('what it is', () => told);
    await host.activate();
    await hidden();
    await host.activate();
    await shown();
    const opacities = new Set([...told.matchAll(/= (\d+)/g)].map(([, number]) => Number(number)));
    spy.kill();
    assert.ok(opacities.size > 4, `was seen at ${[...opacities]}`);
  });

  test('its menu opens where the tray shows none, and the panel makes room', async () => {
    await host.menu();
    await pause(500);
    assert.ok(panel() && state().hidden === false, 'for no menu that is only asked about');
    await host.askForMenu();
    await hidden();
    await until('the menu', () => ours().length > 0);
    desktop.press('Escape');
    await until('no menu', () => ours().length === 0);
    await host.activate();
    await shown();
  });

  const labels = async () => (await host.menu()).map(({ label }) => label);

  test('only what can be used is offered', async () => {
    assert.ok(!(await labels()).includes('Always on top'), 'in icon mode');
    renameSync(codex, `${codex}.away`);
    assert.ok(!(await labels()).includes('Open with Codex'), 'without Codex');
    renameSync(`${codex}.away`, codex);
    assert.ok((await labels()).includes('Open with Codex'));
    assert.equal((await host.entry('View', 'Notch view')).enabled, false);
    assert.match((await host.menu()).at(-2).label, /^Version \d/);
    assert.equal((await host.menu()).at(-2).enabled, false);
  });

  // What is clicked, what is remembered then, and what the entry is called then.
  for (const [click, key, value, then = click] of [
    [['View', 'Window'], 'view', 'window'],
    [['Statistics'], 'expanded', true],
    [['Always on top'], 'topmost', false],
    [['Disable animations'], 'animations', false, ['Enable animations']],
    [['Check for updates'], 'updateCheck', false],
    [['Open with Claude Code'], 'launchWithClaude', true],
    [['Open with Codex'], 'launchWithCodex', true],
    [['Status line in Claude Code'], 'statusLine', true],
    [['Start at login'], 'autostart', true],
    [['Hide widget'], 'hidden', true, ['Show widget']],
    [['Show widget'], 'hidden', false, ['Hide widget']],
    [['Language', 'Deutsch'], 'language', 'de', ['Sprache', 'Deutsch']],
  ]) {
    test(`"${click.join(' > ')}" is done and remembered`, async () => {
      assert.notEqual(told()[key], value);
      await host.click(...click);
      await until(key, () => told()[key] === value);
      const { toggle, checked } = await until('its title', () => host.entry(...then).catch(() => undefined));
      assert.equal(checked, toggle !== '' && value !== false);
    });
  }

  test('it ends by the menu, and comes back as it was left', async () => {
    const menu = async () => JSON.stringify(await host.menu(), (key, value) => (key === 'id' ? undefined : value));
    const { width } = panel();
    const [before, remembered] = [await menu(), told()];
    await host.click('Beenden');
    assert.deepEqual(await running.ended, [0, null]);
    await until('no item', async () => !await host.hasItem());
    await start();
    await until('the same menu', async () => await host.hasItem() && await menu() === before);
    await until('the wide panel', () => panel()?.width === width);
    assert.deepEqual(told(), remembered);
  });

  test('much use leaves nothing behind', async () => {
    await startAnew();
    await until('the item', () => host.hasItem());
    await shown();
    const xClient = ({ id }) => id >> 21;
    const mine = xClient(panel());
    const count = () => ({
      windows: [...execFileSync('xwininfo', ['-root', '-tree'], { encoding: 'utf8' }).matchAll(/^ +0x([0-9a-f]+) /gm)]
        .filter(([, id]) => xClient({ id: parseInt(id, 16) }) === mine).length,
      files: readdirSync(`/proc/${running.process.pid}/fd`).length,
    });
    const deeds = [
      () => host.click('Statistics'),
      () => host.click(/^(Show|Hide) widget$/),
      async () => {
        const { children } = await host.entry('View');
        await host.click('View', children.find(({ toggle, checked }) => toggle && !checked).label);
      },
      // In window mode it would open the menu, which stays in the way.
      async () => (await host.entry('View', 'Menu icon')).checked && host.activate(),
    ];
    const is = (key, value) => until(key, () => state()[key] === value);
    const rests = async () => {
      if ((await host.entry('View', 'Window')).checked) await host.click('View', 'Menu icon');
      await is('view', 'icon');
      if ((await host.entry('Statistics')).checked) await host.click('Statistics');
      await is('expanded', false);
      if ((await host.entry(/^(Show|Hide) widget$/)).label === 'Hide widget') await host.activate();
      await hidden();
      await host.activate(); // to hang where the pointer is
      await standsAt(6, 6);
    };
    let random = 1;
    const use = async () => {
      for (let round = 0; round < 75; ++round) {
        random = (random * 16_807) % 2_147_483_647;
        await deeds[random % deeds.length]();
      }
      await rests();
    };
    await use();
    const earlier = count(); // with what is made once
    await use();
    await until(`${JSON.stringify(earlier)} again`, () => JSON.stringify(count()) === JSON.stringify(earlier))
      .catch(() => assert.deepEqual(count(), earlier));
  });
});

describe('without a tray', () => {
  before(startAnew);

  test('the panel is a window, which is minimised when it is hidden', async () => {
    await standsInCorner();
    const window = panel();
    desktop.click((await desktop.called('Hide')).frame);
    await hidden();
    desktop.activate(window);
    await shown();
    await standsInCorner();
  });

  test('a tray that appears has the item, and the panel drops from there', async () => {
    const host = new TrayHost();
    await until('the item', () => host.hasItem());
    const { width } = await until('the panel', panel);
    await standsAt(SCREEN.width - width - 6, 6); // it does not tell where
    assert.equal(state().view, 'icon');
    await host.activate();
    await hidden();
    desktop.point({ x: 300, y: 2, width: 0, height: 0 }); // but a click does
    await host.activate();
    await shown();
    await standsAt(300 - panel().width / 2, 6);
    await host.close();
    await end();
  });
});
