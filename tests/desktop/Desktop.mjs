// The desktop around the widget: the X server's pointer and keyboard, pictures of the screen, and what
// the widget shows and where.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { setTimeout as pause } from 'node:timers/promises';

import { Accessibility } from './Accessibility.mjs';

const PATIENCE = 20_000; // milliseconds; for a loaded machine

const xdotool = (...words) => execFileSync('xdotool', words, { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] });

/** Waits until `look` returns something true, and returns that. */
export async function until(what, look) {
  const deadline = Date.now() + PATIENCE;
  for (;;) {
    const seen = await look();
    if (seen) return seen;
    assert.ok(Date.now() < deadline, `waited in vain for ${what}`);
    await pause(50);
  }
}

/** What `xdotool search` finds of what is to be seen, by its own words: `{ id, x, y, width, height }`. */
export function windows(...words) {
  let told;
  try {
    told = xdotool('search', '--onlyvisible', ...words, 'getwindowgeometry', '--shell', '%@');
  } catch {
    return []; // none, or one that went while it was looked at
  }
  return [...told.matchAll(/WINDOW=(\d+)\nX=(-?\d+)\nY=(-?\d+)\nWIDTH=(\d+)\nHEIGHT=(\d+)/g)]
    .map(([, ...numbers]) => numbers.map(Number))
    .map(([id, x, y, width, height]) => ({ id, x, y, width, height }));
}

export class Desktop {
  #widget;

  /** Waits for a program's window, which gets the keyboard, and for what it tells screen readers. */
  async meet(name) {
    this.activate(await until('a window', () => windows('--class', name)[0]));
    await this.listen(name);
  }

  /** Waits for what a program tells screen readers, whether it has windows or not. */
  async listen(name) {
    const accessibility = new Accessibility();
    this.#widget = await until('the widget among the accessible programs', () => accessibility.program(name));
  }

  /** Waits for a thing to be seen that fits. */
  showing(what, fits) {
    return until(what, () => {
      for (const element of this.#widget.shown()) if (fits(element)) return element;
      return undefined;
    });
  }

  /** The same by its whole name; `fits` tells apart what shares one. */
  called(wanted, fits = () => true) {
    return this.showing(`"${wanted}"`, (element) => element.name === wanted && fits(element));
  }

  /** The same by how its name begins. */
  starting(words) {
    return this.showing(`"${words}…"`, ({ name }) => name.startsWith(words));
  }

  /** Moves the pointer onto a frame, at these shares of its width and height. */
  point({ x, y, width, height }, across = 0.5, down = 0.5) {
    xdotool('mousemove', String(Math.round(x + width * across)), String(Math.round(y + height * down)));
  }

  /** Gives a window the keyboard, and brings it back if it is minimised. */
  activate({ id }) {
    xdotool('windowactivate', '--sync', String(id));
  }

  /** The id of the window that has the keyboard. */
  keyboard() {
    return Number(xdotool('getwindowfocus'));
  }

  /** Goes to another desktop (workspace), counted from 0. */
  goTo(desktop) {
    xdotool('set_num_desktops', '2', 'set_desktop', String(desktop));
  }

  /** Moves the pointer away from the widget, which is never in this corner. */
  leave() {
    xdotool('mousemove', '2', '2');
  }

  click(frame, button = 1) {
    this.point(frame);
    this.clickHere(button);
  }

  clickHere(button = 1) {
    xdotool('click', String(button));
  }

  /** The same with a key held. */
  clickWith(key) {
    xdotool('keydown', key, 'click', '1', 'keyup', key);
  }

  /** Drags a frame by its top, where there is nothing to press, by so many pixels. */
  async drag(frame, right, down) {
    this.point({ ...frame, height: 16 });
    xdotool('mousedown', '1');
    for (let step = 1; step <= 10; ++step) {
      await pause(20); // as a hand does, which the window manager has to follow
      this.point({ ...frame, height: 16, x: frame.x + right * step / 10, y: frame.y + down * step / 10 });
    }
    xdotool('mouseup', '1');
  }

  /** Turns the wheel by notches, up for positive ones. */
  turnWheel(notches) {
    xdotool('click', '--repeat', String(Math.abs(notches)), notches > 0 ? '4' : '5');
  }

  press(...keys) {
    xdotool('key', ...keys);
  }

  /** Long enough for a key to have its effect, as a rule. */
  pause() {
    return pause(100);
  }

  /** A fingerprint of what the screen shows there. */
  picture({ x, y, width, height }) {
    return execFileSync('import', ['-silent', '-window', 'root', '-crop', `${width}x${height}+${x}+${y}`,
      '-format', '%#', 'info:'], { encoding: 'utf8' });
  }

  /** The same as soon as nothing moves any more. */
  async still(frame) {
    let earlier;
    return until('a picture that stays', async () => {
      const before = earlier;
      await pause(300);
      earlier = this.picture(frame);
      return earlier === before && earlier;
    });
  }
}
