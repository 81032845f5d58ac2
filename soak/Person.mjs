// Somebody who uses the widget without a plan: clicks, keys and wheel in the panel and the settings,
// the tray and its menu; and who puts everything away again.

import { existsSync, readFileSync } from 'node:fs';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';

import { Desktop, until, windows } from '../tests/desktop/Desktop.mjs';
import { TrayHost } from '../tests/desktop/TrayHost.mjs';

const data = join(homedir(), '.kestrelbay');
// Not the key that ends the program.
const KEYS = ['Tab', 'Tab', 'Tab', 'shift+Tab', 'Left', 'Right', 'Up', 'Down', 'Home', 'End', 'Prior', 'Next',
  'space', 'Return', 'Escape', 'a', 'ctrl+Tab'];
const LEAST_SETTINGS = 420; // pixels, wider than any menu

const file = join(data, 'state.json');
const state = () => (existsSync(file) ? JSON.parse(readFileSync(file, 'utf8')) : {});

/** What is to be seen of the widget; a menu has no name that windows are searched by. */
function seen() {
  const [panel] = windows('--name', '^Kestrelbay$');
  const others = windows('--class', '^kestrelbay$').filter(({ id }) => id !== panel?.id);
  const isSettings = ({ width }) => width >= LEAST_SETTINGS;
  return { panel, settings: others.find(isSettings), menu: others.find((window) => !isSettings(window)) };
}

export class Person {
  #random;
  #startAgain;
  #desktop = new Desktop();
  #tray = new TrayHost();
  #texts = Object.values(JSON.parse(readFileSync(join(data, 'i18n.json'), 'utf8')));

  /** `startAgain` starts another copy of the widget. */
  constructor(random, startAgain) {
    this.#random = random;
    this.#startAgain = startAgain;
  }

  /** Waits for the widget. */
  arrive() {
    return until('the item', () => this.#tray.hasItem());
  }

  /** Fits a text in every language. */
  #text(key) {
    const words = this.#texts.map((texts) => texts[key].replace(/[.*+?^$()|[\]\\]/g, '\\$&').replace('{0}', '.*'));
    return new RegExp(`^(?:${words.join('|')})$`);
  }

  #somewhere(frame) {
    this.#desktop.point(frame, 0.01 + 0.98 * this.#random.next(), 0.01 + 0.98 * this.#random.next());
  }

  #click(frame) {
    this.#somewhere(frame);
    this.#desktop.clickHere();
  }

  async #hover(frame) {
    for (let step = this.#random.whole(2, 12); step > 0; --step) {
      this.#somewhere(frame);
      await pause(this.#random.whole(0, 60));
    }
  }

  #wheel(frame) {
    this.#somewhere(frame);
    this.#desktop.turnWheel(this.#random.whole(1, 20) * this.#random.pick([-1, 1]));
  }

  #keys() {
    this.#desktop.press(...Array.from({ length: this.#random.whole(1, 8) }, () => this.#random.pick(KEYS)));
  }

  /** The row of buttons at the top. */
  #header(frame) {
    this.#click({ ...frame, y: frame.y + 16, height: 22 });
  }

  async #contextMenu(frame) {
    this.#somewhere(frame);
    this.#desktop.clickHere(3);
    await pause(150);
    this.#desktop.press(...Array(this.#random.whole(0, 9)).fill('Down'), 'Right', 'Down');
  }

  /** Anything in the tray's menu but the end of the program. */
  async #menu() {
    const leaves = (entries, path = []) => entries.filter(({ visible, enabled, type }) => visible && enabled && type !== 'separator')
      .flatMap(({ label, children }) => (children.length ? leaves(children, [...path, label]) : [[...path, label]]));
    const exit = this.#text('menuExit');
    await this.#tray.click(...this.#random.pick(leaves(await this.#tray.menu()).filter(([label]) => !exit.test(label))));
  }

  async #restartTray() {
    await this.#tray.close();
    await pause(this.#random.pick([0, 500, 5000]));
    this.#tray = new TrayHost();
  }

  async #otherDesktop() {
    this.#desktop.goTo(1);
    await pause(300);
    this.#desktop.goTo(0);
  }

  /** Does something, and tells what. What cannot be done at the moment is no harm. */
  async act() {
    const { panel: frame, settings, menu } = seen();
    if (menu) {
      this.#dismissMenu();
      return 'menu away';
    }
    const anywhere = {
      'tray click': () => this.#tray.activate(),
      'menu item': () => this.#menu(),
      'open settings': () => this.#tray.click(this.#text('menuSettings')),
      'pointer away': () => this.#desktop.leave(),
      keys: () => this.#keys(),
      'other desktop': () => this.#otherDesktop(),
      'tray restart': () => this.#restartTray(),
      'second copy': () => this.#startAgain(),
    };
    const onPanel = frame && {
      click: () => this.#click(frame),
      header: () => this.#header(frame),
      hover: () => this.#hover(frame),
      wheel: () => this.#wheel(frame),
      'context menu': () => this.#contextMenu(frame),
      drag: () => this.#desktop.drag(frame, this.#random.whole(-300, 300), this.#random.whole(-200, 200)),
    };
    const inSettings = settings && {
      'settings click': () => this.#click(settings),
      'settings hover': () => this.#hover(settings),
      'settings wheel': () => this.#wheel(settings),
      'settings close': () => this.#closeSettings(settings),
    };
    const weights = { 'tray click': frame ? 2 : 20, 'menu item': 8, 'open settings': 3, 'pointer away': 3, keys: 10,
      'other desktop': 0.5, 'tray restart': 0.3, 'second copy': 0.3,
      ...frame && { click: 20, header: 8, hover: 12, wheel: 12, 'context menu': 2, drag: 3 },
      ...settings && { 'settings click': 20, 'settings hover': 3, 'settings wheel': 3, 'settings close': 5 } };
    const deed = this.#random.oneOf(weights);
    await { ...anywhere, ...onPanel, ...inSettings }[deed]();
    return deed;
  }

  #dismissMenu() {
    this.#desktop.press('Escape', 'Escape');
    if (seen().menu) {
      this.#desktop.leave();
      this.#desktop.clickHere();
    }
  }

  #closeSettings(window) {
    this.#desktop.activate(window);
    this.#desktop.press('ctrl+w');
  }

  async #putAway() {
    await until('nothing but the panel', () => {
      const { settings, menu } = seen();
      if (menu) this.#dismissMenu();
      else if (settings) this.#closeSettings(settings);
      return !settings && !menu;
    });
  }

  /** Puts everything away: the panel is compact, speaks English and is hidden in its icon. */
  async rest() {
    this.#desktop.leave();
    for (const desktop of [1, 0]) {
      this.#desktop.goTo(desktop);
      await this.#putAway();
    }
    await this.arrive();
    const is = (key, value) => until(`${key} ${value}`, () => state()[key] === value);
    const change = async (key, value, ...labels) => {
      if (state()[key] !== value) await this.#tray.click(...labels);
      await is(key, value);
    };
    await change('language', 'en', this.#text('menuLanguage'), 'English');
    await change('view', 'icon', 'View', 'Menu icon');
    await change('animations', true, 'Enable animations');
    await change('expanded', false, 'Statistics');
    await this.#tray.menu(); // to which what hangs there gives way
    await is('hidden', true);
  }

  close() {
    return this.#tray.close();
  }
}
