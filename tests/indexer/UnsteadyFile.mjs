// A transcript that grows, shrinks, moves and is replaced until it is what it is meant to be.

import { spawnSync } from 'node:child_process';
import {
  appendFileSync,
  existsSync,
  linkSync,
  mkdirSync,
  readFileSync,
  renameSync,
  rmSync,
  statSync,
  truncateSync,
  utimesSync,
  writeFileSync,
} from 'node:fs';
import { basename, dirname, join } from 'node:path';

const YEAR = 365 * 24 * 60 * 60;

/** The same lines with other numbers: smaller ones, where the largest that was ever told counts. */
function forged(content, isOfCodex) {
  const text = content.toString('latin1');
  const other = isOfCodex
    ? text.replace(/(in|out)put_tokens":/g, '$&9')
    : text.replace(/(in|out)put_tokens":\d+/g, '$1put_tokens":0');
  return Buffer.from(other, 'latin1');
}

export class UnsteadyFile {
  static #replaced = 0;

  #length = 0; // so many bytes of the content are there
  #isPacked = false;
  #isForged = false;
  #forgeries = [];

  /** `spare` is a folder on the same disk, outside the home. */
  constructor({ root, path, content, spare, random, mayForge }) {
    Object.assign(this, { root, path, content, spare, random, mayForge });
    this.place = path;
    this.isRollout = /^\.codex\/.*rollout-[^/]*\.jsonl$/.test(path);
    const isTranscript = /^\.claude\/(?!.*(journal|history|orphaned|superseded)).*\.jsonl$/.test(path);
    this.kind = this.isRollout ? 'rollout' : isTranscript ? 'transcript' : 'other';
  }

  static #changes = {
    grow: [10, (file) => file.#grow()],
    truncate: [1, (file) => file.#truncate()],
    replace: [1, (file) => file.#replace()],
    forge: [1, (file) => file.#forge()],
    setBack: [1, (file) => file.#setBack()],
    move: [2, (file) => file.#move()],
    pack: [2, (file) => file.#pack()],
  };

  /** One change at random; most of them lead on. */
  disturb() {
    const changes = Object.values(UnsteadyFile.#changes);
    const change = changes[this.random.weighted(changes.map(([weight]) => weight))][1];
    if (this.#exists) change(this);
    else this.#grow();
  }

  /** All of it at its own place; the file may stay what it is. */
  settle() {
    this.#unpack();
    if (this.#isForged) this.#replaceBy(this.content.subarray(0, this.#length));
    this.#moveTo(this.path);
    this.#appendTo(this.content.length);
  }

  /** How often it held something that was never its content. */
  get forgeries() {
    return this.#forgeries.length;
  }

  /** Puts all that it ever held beside it, in files of their own. */
  putForgeriesBeside() {
    for (const [number, forgery] of this.#forgeries.entries()) {
      const name = basename(this.path);
      const place = this.isRollout ? `forgery-${number}/${name}` : `forgery-${number}-${name}`;
      const path = join(this.root, dirname(this.path), place);
      mkdirSync(dirname(path), { recursive: true });
      writeFileSync(path, forgery);
    }
  }

  /** Loses some of what it holds, or all; one of `others` may come to stand in its place. */
  spoil(others) {
    if (!this.#exists) return;
    const other = this.random.pick(others.filter(({ kind }) => kind === this.kind));
    const ways = [
      () => rmSync(this.#file),
      () => truncateSync(this.#file, this.random.whole(0, statSync(this.#file).size)),
      () => other.#exists && renameSync(other.#file, this.#file),
    ];
    this.random.pick(ways)();
  }

  get #exists() {
    return existsSync(this.#file);
  }

  get #file() {
    return join(this.root, this.place) + (this.#isPacked ? '.zst' : '');
  }

  #grow() {
    const { length } = this.content;
    this.#unpack();
    if (this.#isForged) this.#replaceBy(this.content.subarray(0, this.#length));
    this.#appendTo(this.random.chance(0.4) ? length : this.random.whole(this.#length, length));
  }

  #truncate() {
    this.#unpack();
    this.#length = this.random.whole(0, this.#length);
    truncateSync(this.#file, this.#length);
  }

  #replace() {
    this.#unpack();
    this.#length = this.random.whole(this.#length, this.content.length);
    this.#replaceBy(this.content.subarray(0, this.#length));
  }

  /** A run has to see it before the next change. */
  #forge() {
    if (!this.mayForge) return;
    this.#unpack();
    const isOfCodex = this.path.startsWith('.codex');
    const forgery = forged(this.content.subarray(0, this.#length), isOfCodex);
    this.#replaceBy(forgery);
    this.#isForged = true;
    if (this.isRollout) this.#forgeries.push(forgery);
  }

  #setBack() {
    const then = Date.now() / 1000 - this.random.next() * YEAR;
    utimesSync(this.#file, then, then);
  }

  #move() {
    if (!this.isRollout || this.#isForged || this.#isPacked) return;
    const isAway = this.place !== this.path;
    const away = this.path.includes('/archived_sessions/') ? 'sessions/2026' : 'archived_sessions';
    this.#moveTo(isAway ? this.path : `.codex/${away}/${basename(this.path)}`);
  }

  #pack() {
    if (!this.isRollout || this.#isForged || this.#isPacked) return;
    spawnSync('zstd', ['-q', '-f', this.#file, '-o', `${this.#file}.zst`]);
    rmSync(this.#file);
    this.#isPacked = true;
  }

  #unpack() {
    if (!this.#isPacked) return;
    const packed = this.#file;
    this.#isPacked = false;
    writeFileSync(this.#file, this.content.subarray(0, this.#length));
    rmSync(packed);
  }

  #moveTo(place) {
    if (!this.#exists) {
      this.place = place;
      return;
    }
    const old = this.#file;
    this.place = place;
    mkdirSync(dirname(this.#file), { recursive: true });
    renameSync(old, this.#file);
  }

  #appendTo(length) {
    mkdirSync(dirname(this.#file), { recursive: true });
    appendFileSync(this.#file, this.content.subarray(this.#length, length));
    this.#length = length;
  }

  /** Puts another file in the place of this one, which lives on, so that nothing gets its number. */
  #replaceBy(content) {
    const spare = join(this.spare, String((UnsteadyFile.#replaced += 1)));
    linkSync(this.#file, `${spare}.old`);
    writeFileSync(spare, content);
    renameSync(spare, this.#file);
    this.#isForged = false;
  }
}
