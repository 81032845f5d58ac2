// The accessibility bus, through which a screen reader learns what a program shows and where.

import { execFileSync } from 'node:child_process';

const ROOT = '/org/a11y/atspi/accessible/root';
const ACCESSIBLE = 'org.a11y.atspi.Accessible';
// States by their bits.
const FOCUSED = 1 << 12;
const SHOWING = 1 << 25;

const send = (...words) => execFileSync('dbus-send', ['--print-reply', '--reply-timeout=5000', ...words],
  { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] });

const numbers = (reply) => [...reply.matchAll(/int32 (-?\d+)/g)].map(([, digits]) => Number(digits));
const text = (reply) => /string "([\s\S]*)"\n$/.exec(reply)?.[1] ?? '';

/** Something that a program tells screen readers of. What has gone is nameless and not to be seen. */
class Element {
  #ask;

  constructor(ask, path = ROOT) {
    this.#ask = (method, ...words) => ask(path, method, ...words);
    this.inside = (child) => new Element(ask, child);
  }

  #property(key) {
    return text(this.#ask('org.freedesktop.DBus.Properties.Get', `string:${ACCESSIBLE}`, `string:${key}`));
  }

  get name() {
    return this.#property('Name');
  }

  get description() {
    return this.#property('Description');
  }

  get role() {
    return text(this.#ask(`${ACCESSIBLE}.GetRoleName`));
  }

  get #states() {
    return numbers(this.#ask(`${ACCESSIBLE}.GetState`))[0] ?? 0;
  }

  get isShowing() {
    return (this.#states & SHOWING) !== 0;
  }

  get isFocused() {
    return (this.#states & FOCUSED) !== 0;
  }

  /** Where it is on the screen. */
  get frame() {
    const [x, y, width, height] = numbers(this.#ask('org.a11y.atspi.Component.GetExtents', 'uint32:0'));
    return { x, y, width, height };
  }

  /** Everything in it that is to be seen. */
  * shown() {
    const children = this.#ask(`${ACCESSIBLE}.GetChildren`);
    for (const [, path] of children.matchAll(/object path "([^"]*)"/g)) {
      const child = this.inside(path);
      if (!child.isShowing) continue;
      yield child;
      yield* child.shown();
    }
  }
}

export class Accessibility {
  #bus = text(send('--session', '--dest=org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Bus.GetAddress'));

  #asker(owner) {
    return (path, ...words) => {
      try {
        return send(`--bus=${this.#bus}`, `--dest=${owner}`, path, ...words);
      } catch {
        return ''; // gone, or nothing that can answer
      }
    };
  }

  /** The program of this name; nothing as long as it is not there. */
  program(name) {
    // Qt does not enrol its programs in the registry's list, so whoever is on the bus is asked.
    const names = this.#asker('org.freedesktop.DBus')('/org/freedesktop/DBus', 'org.freedesktop.DBus.ListNames');
    return [...names.matchAll(/"(:[^"]*)"/g)]
      .map(([, owner]) => new Element(this.#asker(owner)))
      .find((root) => root.name === name);
  }
}
