// What a process holds and does at a moment, as the kernel and the X server count it.

import { spawnSync } from 'node:child_process';
import { readdirSync, readFileSync } from 'node:fs';

const MB = 1024; // kB, in which the kernel counts
const CLIENT = 0xffe00000; // the part of an id that tells whose it is
const TICKS = 100; // a second, of processor time; the same on every Linux that we know of

const number = (text, name) => Number(new RegExp(`^\\s*${name}\\s*:\\s*(\\d+)`, 'm').exec(text)?.[1] ?? 0);

/** What a process or a thread that may have ended does not tell is empty. */
function read(path) {
  try {
    return readFileSync(path, 'utf8');
  } catch {
    return '';
  }
}

/** What a program prints; nothing when it fails. */
function ask(program, ...words) {
  return spawnSync(program, words, { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] }).stdout;
}


export class Gauge {
  #base;
  #folder;
  #windowClass;

  constructor(pid, windowClass) {
    this.#folder = `/proc/${pid}`;
    this.#windowClass = windowClass;
  }

  #ofThreads(name) {
    return readdirSync(`${this.#folder}/task`).map((id) => [id, read(`${this.#folder}/task/${id}/${name}`)]);
  }

  #memory() {
    const rollup = read(`${this.#folder}/smaps_rollup`);
    const sum = (...names) => names.reduce((total, name) => total + number(rollup, name), 0) / MB;
    // The last is what nobody else has a share in, so that other programs do not change it.
    return { rss: sum('Rss'), pss: sum('Pss'), private: sum('Private_Dirty', 'Swap') };
  }

  /** Of the connection that has the windows, which is known by the class of the first one. */
  #server() {
    const window = Number.parseInt(ask('xdotool', 'search', '--class', `^${this.#windowClass}$`), 10);
    if (window) this.#base ??= `0x${(window & CLIENT).toString(16)}\n`;
    const client = ask('xrestop', '-b', '-m', '1').split(/^(?=\d+ - )/m).find((one) => one.includes(`res_base      : ${this.#base}`));
    return { windows: number(client, 'windows'), pixmaps: number(client, 'pixmaps') };
  }

  get children() {
    return this.#ofThreads('children').flatMap(([, text]) => text.split(' ').filter(Boolean));
  }

  /** Processor time in seconds. */
  get cpu() {
    const fields = read(`${this.#folder}/stat`).replace(/^.*\) /, '').split(' ');
    return (Number(fields[11]) + Number(fields[12])) / TICKS;
  }

  /** How often each thread has waited for something and gone on, by its id. */
  get wakeUps() {
    return new Map(this.#ofThreads('status').map(([id, text]) => [id, number(text, 'voluntary_ctxt_switches')]));
  }

  /** How often since then, all together. */
  wakeUpsSince(earlier) {
    return [...this.wakeUps].reduce((sum, [id, count]) => sum + count - (earlier.get(id) ?? 0), 0);
  }

  /** `rss`, `pss` and `private` in MB, `cpu` in seconds, the rest counted. */
  sample() {
    return { ...this.#memory(), fds: readdirSync(`${this.#folder}/fd`).length,
      threads: readdirSync(`${this.#folder}/task`).length, children: this.children.length, ...this.#server(), cpu: this.cpu };
  }
}
