// However transcripts came to be what they are, and whatever happened to the runs that watched them
// grow: a run into the old data folder tells the same as one into a new one that finds all that was
// ever told.
//
// KESTRELBAY_CASES is how many cases are tried, KESTRELBAY_SEED the first one.

import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { mkdirSync, readdirSync, readFileSync, rmSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { performance } from 'node:perf_hooks';
import { test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';

import { Random } from '../../sample/random.mjs';
import { assertReports } from '../companions/sampleTotals.mjs';
import { checkout, run, scratchFolder } from '../companions/scratch.mjs';
import { UnsteadyFile } from './UnsteadyFile.mjs';

const INDEXER = join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-indexer');
const CASES = Number(process.env.KESTRELBAY_CASES ?? 25);
const FIRST = Number(process.env.KESTRELBAY_SEED ?? 1);

function filesBelow(folder) {
  return readdirSync(folder, { recursive: true })
    .map(String)
    .filter((path) => statSync(join(folder, path)).isFile());
}

/** A difference is told by its surroundings: the texts are long. */
function assertSame(text, expected) {
  let at = 0;
  while (at < expected.length && text[at] === expected[at]) at += 1;
  const around = (whole) => whole.slice(Math.max(0, at - 200), at + 100);
  assert.equal(around(text), around(expected));
  assert.equal(text.length, expected.length);
}

/** A sample home and a second one that becomes the same, with the data folder of its indexer. */
class Case {
  constructor(scratch, seed) {
    this.random = new Random(seed);
    this.root = join(scratch, 'home');
    this.data = join(scratch, 'data');
    this.duration = 10;
    const sample = join(scratch, 'sample');
    const days = String(this.random.whole(20, 60));
    const words = ['--small', '--idle', '--until=2026-11-21', '--days', days, '--seed', `${seed}`];
    const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), sample, ...words]);
    assert.equal(made.status, 0, made.stderr);
    this.totals = JSON.parse(readFileSync(join(sample, 'totals.json'), 'utf8'));
    const spare = join(scratch, 'spare');
    const mayForge = this.random.chance(0.5);
    for (const folder of [spare, join(this.root, '.claude/projects'), join(this.root, '.codex')]) {
      mkdirSync(folder, { recursive: true });
    }
    this.files = ['.claude/projects', '.codex'].flatMap((part) =>
      filesBelow(join(sample, part)).map((name) => {
        const path = join(part, name);
        const content = readFileSync(join(sample, path));
        const { root, random } = this;
        return new UnsteadyFile({ root, path, content, spare, random, mayForge });
      }),
    );
  }

  /** Starts the indexer; tells how it ended. */
  start(data, ...words) {
    const home = ['--claude', join(this.root, '.claude'), '--codex', join(this.root, '.codex')];
    const child = spawn(INDEXER, ['--data', data, ...home, ...words]);
    const texts = { stdout: '', stderr: '' };
    for (const stream of ['stdout', 'stderr']) {
      child[stream].setEncoding('utf8').on('data', (text) => (texts[stream] += text));
    }
    const ended = new Promise((resolve) => {
      child.on('close', (status, signal) => resolve({ status, signal, ...texts }));
    });
    return { child, ended };
  }

  async index(data = this.data, ...words) {
    const begin = performance.now();
    const { status, stdout, stderr } = await this.start(data, ...words).ended;
    this.duration = performance.now() - begin;
    assert.equal(status, 0, stderr);
    assert.match(stderr, /^(kestrelbay-indexer: skipped .*\n)?$/);
    return stdout;
  }

  get forgeries() {
    return this.files.reduce((sum, file) => sum + file.forgeries, 0);
  }

  /** Some changes, while something else may be under way; what was forged is told of at once. */
  async disturb(meanwhile) {
    const { forgeries } = this;
    const share = this.random.next();
    for (const file of this.files) if (this.random.chance(share)) file.disturb();
    await meanwhile;
    if (this.forgeries > forgeries) await this.index();
  }

  /** Loses some of what there is. */
  spoil() {
    for (const file of this.files) if (this.random.chance(0.5)) file.spoil(this.files);
  }

  static #ways = [
    [4, (test) => test.index()],
    [2, (test) => test.#indexAndKill()],
    [2, (test) => Promise.all([test.index(), test.index()])],
    [1, (test) => test.#indexMeanwhile()],
  ];

  /** Some changes and a run that sees them, in one way or another. */
  async step() {
    await this.disturb();
    const way = this.random.weighted(Case.#ways.map(([weight]) => weight));
    await Case.#ways[way][1](this);
  }

  async #indexAndKill() {
    const { child, ended } = this.start(this.data);
    await sleep(this.random.next() * 1.2 * this.duration);
    child.kill('SIGKILL');
    const { status, signal, stderr } = await ended;
    assert.ok(signal === 'SIGKILL' || status === 0, stderr);
  }

  #indexMeanwhile() {
    return this.disturb(this.index());
  }

  settle() {
    for (const file of this.files) file.settle();
  }

  stats(data = this.data) {
    return readFileSync(join(data, 'stats.json'), 'utf8');
  }

  async reports() {
    const report = async (kind) =>
      JSON.parse(await this.index(this.data, 'report', kind, '--json'));
    const reports = { daily: await report('daily'), sessions: await report('sessions') };
    return (kind) => reports[kind];
  }
}

/** Plays each case in a folder of its own; a failure tells which it was. */
async function forEachCase(context, count, play) {
  const scratch = scratchFolder(context);
  for (let seed = FIRST; seed < FIRST + count; seed += 1) {
    const folder = join(scratch, String(seed));
    try {
      await play(new Case(folder, seed), folder);
    } catch (error) {
      error.message = `KESTRELBAY_SEED=${seed} KESTRELBAY_CASES=1: ${error.message}`;
      throw error;
    }
    rmSync(folder, { recursive: true });
  }
}

test('the way to a tree of transcripts leaves no trace in what they add up to', (context) =>
  forEachCase(context, CASES, async (home, folder) => {
    for (let steps = home.random.whole(1, 6); steps > 0; steps -= 1) await home.step();
    home.settle();
    await home.index();
    if (home.forgeries === 0) assertReports(await home.reports(), home.totals);
    for (const file of home.files) file.putForgeriesBeside();
    const fresh = join(folder, 'fresh');
    await home.index(fresh);
    assertSame(home.stats(), home.stats(fresh));
  }));

/** Days, and what sessions used; titles go with the lines that told them. */
function figures(report) {
  const sessions = report('sessions').map(({ title, project, end, ...amounts }) => amounts);
  return { days: report('daily'), sessions: sessions.map((row) => JSON.stringify(row)).sort() };
}

test('what was counted stays when transcripts are deleted, cut and overwritten', (context) =>
  forEachCase(context, Math.ceil(CASES / 5), async (home) => {
    home.settle();
    await home.index();
    const reports = await home.reports();
    assertReports(reports, home.totals);
    const before = figures(reports);
    for (let rounds = home.random.whole(1, 3); rounds > 0; rounds -= 1) {
      home.spoil();
      await home.index();
      assert.deepEqual(figures(await home.reports()), before);
    }
  }));
