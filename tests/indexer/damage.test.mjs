// Whichever bit of a history flips: as long as its transcripts are there, the next run tells the right
// figures, ends well, and says at most one line about it; and doctor had seen it.
//
// KESTRELBAY_FLIPS is how many bits are tried, KESTRELBAY_SEED chooses them.

import assert from 'node:assert/strict';
import {
  appendFileSync,
  mkdirSync,
  readdirSync,
  readFileSync,
  rmSync,
  statSync,
  truncateSync,
  writeFileSync,
} from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { Random } from '../../sample/random.mjs';
import { checkout, run, scratchFolder } from '../companions/scratch.mjs';

const INDEXER = join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-indexer');
const FLIPS = Number(process.env.KESTRELBAY_FLIPS ?? 40);
const SEED = Number(process.env.KESTRELBAY_SEED ?? 1);
const PRICE = { input: 1, output: 2, write5m: 1, write1h: 1, read: 1 };
const PRICES = JSON.stringify({ models: { 'claude-opus-5-5': { prices: [PRICE] } } });

/** A sample home and histories of it, one of which has not seen the last lines yet. */
class Home {
  constructor(scratch) {
    this.root = join(scratch, 'sample');
    const words = ['--small', '--days', '4', '--until=2026-11-21', '--seed', `${SEED}`];
    const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), this.root, ...words]);
    assert.equal(made.status, 0, made.stderr);
    const older = this.#withoutLastLines(() => this.#history(join(scratch, 'older')));
    this.histories = [older, this.#history(join(scratch, 'newer'))];
  }

  indexer(data, ...words) {
    const folders = ['--data', data, '--claude', join(this.root, '.claude')];
    folders.push('--codex', join(this.root, '.codex'));
    return run(INDEXER, [...words, ...folders], { env: { ...process.env, PATH: '/nowhere' } });
  }

  stats(data) {
    const { status, stderr } = this.indexer(data);
    assert.equal(status, 0, stderr);
    return readFileSync(join(data, 'stats.json'), 'utf8');
  }

  #history(data) {
    this.stats(data);
    const copy = `${data}.sqlite`;
    assert.equal(this.indexer(data, 'backup', copy).status, 0);
    return readFileSync(copy);
  }

  /** Of each third transcript, the second half is still to come. */
  #withoutLastLines(make) {
    const names = readdirSync(this.root, { recursive: true }).map(String);
    const files = names.filter((name) => name.endsWith('.jsonl')).map((name) => join(this.root, name));
    const rests = files
      .filter((file, number) => number % 3 === 0 && statSync(file).isFile())
      .map((file) => ({ file, half: Math.floor(statSync(file).size / 2) }))
      .map(({ file, half }) => ({ file, half, rest: readFileSync(file).subarray(half) }));
    for (const { file, half } of rests) truncateSync(file, half);
    const made = make();
    for (const { file, rest } of rests) appendFileSync(file, rest);
    return made;
  }
}

/** What every run says of the sample is no word about damage. */
function remarks(stderr) {
  return stderr.split('\n').filter((line) => line !== '' && !/: skipped /.test(line));
}

/** A data folder with what there is of these. */
function dataFolder(path, { history, prices }) {
  rmSync(path, { recursive: true, force: true });
  mkdirSync(path);
  if (history !== undefined) writeFileSync(join(path, 'history.sqlite'), history);
  if (prices !== undefined) writeFileSync(join(path, 'prices.json'), prices);
  return path;
}

test('a flipped bit costs a line at most', (context) => {
  const scratch = scratchFolder(context);
  const home = new Home(scratch);
  const data = join(scratch, 'data');
  const usual = home.stats(dataFolder(data, {}));
  const priced = home.stats(dataFolder(data, { prices: PRICES }));
  assert.notEqual(usual, priced);
  const random = new Random(SEED);
  for (let flip = 0; flip < FLIPS; flip += 1) {
    const history = Buffer.from(random.pick(home.histories));
    const place = random.whole(0, history.length - 1);
    const bit = random.whole(0, 7);
    history[place] ^= 1 << bit;
    const prices = random.chance(0.25) ? PRICES : undefined;
    const { status, stderr } = home.indexer(dataFolder(data, { history, prices }));
    const what = `flip ${flip} of seed ${SEED}, bit ${bit} of byte ${place}: ${stderr}`;
    assert.equal(status, 0, what);
    assert.ok(remarks(stderr).length <= 1, what);
    const stats = readFileSync(join(data, 'stats.json'), 'utf8');
    assert.ok(stats === (prices === undefined ? usual : priced), what);
    if (remarks(stderr).length > 0) {
      const { stdout } = home.indexer(dataFolder(data, { history }), 'doctor');
      assert.match(stdout, /the history:/, what);
    }
  }
});
