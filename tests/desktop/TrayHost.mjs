// A tray of the kind that asks programs over the session bus for their status items, and the person
// who uses it.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { join } from 'node:path';
import { createInterface } from 'node:readline';

const program = join(process.env.KESTRELBAY_BUILD, 'tests/trayHost');

/** What a menu shows: hidden entries are left out, and of separators nothing is to be read. */
const shown = (entries) => entries.filter(({ visible }) => visible);

export class TrayHost {
  // The library forgets an answer now and then, which is nothing to the widget.
  #host = spawn(program, { stdio: ['pipe', 'pipe', 'inherit'], env: { ...process.env, ASAN_OPTIONS: `${process.env.ASAN_OPTIONS ?? ''}:detect_leaks=0` } });
  #ended = once(this.#host, 'exit');
  #answers = createInterface({ input: this.#host.stdout })[Symbol.asyncIterator]();

  async #ask(command) {
    this.#host.stdin.write(`${command}\n`);
    const { value, done } = await this.#answers.next();
    assert.ok(!done, 'the tray has gone');
    const answer = JSON.parse(value);
    if (answer.error) throw new Error(`${command}: ${answer.error}`);
    return answer;
  }

  /** Whether a status item has been registered, and is still there. */
  async hasItem() {
    return this.item().then(() => true, () => false);
  }

  /** `{ toolTip }` */
  item() {
    return this.#ask('item');
  }

  /** A left click on the item. */
  activate() {
    return this.#ask('Activate');
  }

  /** A right click on the item in a tray that shows no menus itself. */
  askForMenu() {
    return this.#ask('ContextMenu');
  }

  /**
   * The entries that would be seen if the menu were opened now, which it need not be, from top to bottom:
   * `{ id, label, type, enabled, toggle, checked, children }`; `type` is "standard" or
   * "separator", `toggle` is "", "checkmark" or "radio".
   */
  async menu() {
    const { children } = await this.#ask('menu');
    return shown(children);
  }

  /** The entry of the menu to which these labels lead, whole or as patterns. */
  async entry(...labels) {
    let entries = await this.menu();
    let found;
    for (const label of labels) {
      found = shown(entries).find((entry) => (label.test ? label.test(entry.label) : entry.label === label));
      assert.ok(found, `no "${label}" among ${entries.map((entry) => `"${entry.label}"`).join(', ')}`);
      entries = found.children;
    }
    return found;
  }

  /** Opens the menu and clicks the entry to which these labels lead. */
  async click(...labels) {
    const { id, enabled } = await this.entry(...labels);
    assert.ok(enabled, `"${labels.join(' > ')}" cannot be clicked`);
    await this.#ask(`click ${id}`);
  }

  /** Ends the tray. */
  async close() {
    this.#host.stdin.end();
    await this.#ended;
  }
}
