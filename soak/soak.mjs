// Uses the real widget heavily for minutes, lets it rest from time to time, and tells whether anything
// has grown or gone wrong. Called by tools/soak, on a display and in a home of its own.
//
// What is done follows from KESTRELBAY_SOAK_SEED; when it is done, and so what it meets, does not quite.

import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { mkdirSync, readdirSync, readFileSync } from 'node:fs';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';

import { Random } from '../sample/random.mjs';
import { checkout, run, writeProgram } from '../tests/companions/scratch.mjs';
import { until } from '../tests/desktop/Desktop.mjs';
import { Gauge } from './Gauge.mjs';
import { Person } from './Person.mjs';
import { Surroundings } from './Surroundings.mjs';
import { Verdict } from './Verdict.mjs';

const SECOND = 1000;
const MINUTE = 60 * SECOND;
const ROUND = 3 * MINUTE; // from rest to rest, and no longer than a third of it all
const SETTLING = 12 * SECOND;
const QUIET = 20 * SECOND; // in which wake-ups are counted; threads without work have ended then
const SAMPLES = 5 * SECOND;
const LAST_WORDS = (process.env.KESTRELBAY_SANITIZE ? 30 : 5) * SECOND; // the sanitizers look for leaks

const build = process.env.KESTRELBAY_BUILD;
const program = join(build, 'tests/kestrelbay_on_loopback');
const minutes = Number(process.env.KESTRELBAY_SOAK_MINUTES);
const seed = Number(process.env.KESTRELBAY_SOAK_SEED);
const mark = `KESTRELBAY_SOAK_RUN=${process.pid}`; // in the environment of the widget and what it starts

const random = new Random(seed);
const verdict = new Verdict();
const breaches = [];
const deeds = {};
const missed = {};

/** A home with transcripts, the data folder as the launcher fills it, and a browser that opens nothing. */
function furnish() {
  const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), homedir(), '--small', '--days', '60']);
  const filled = run(join(build, 'bin/kestrelbay-launch'), ['--fill-only']);
  if (made.status !== 0 || filled.status !== 0) throw new Error(made.stderr + filled.stderr);
  mkdirSync(join(homedir(), 'bin'));
  writeProgram(join(homedir(), 'bin/xdg-open'), '#!/bin/sh\n');
}

const environment = {
  ...process.env,
  PATH: `${join(homedir(), 'bin')}:${process.env.PATH}`,
  KESTRELBAY_SOAK_RUN: String(process.pid),
};

function start() {
  const widget = spawn(program, { env: environment, stdio: ['ignore', 'pipe', 'pipe'] });
  for (const stream of [widget.stdout, widget.stderr]) {
    stream.setEncoding('utf8').on('data', (text) => {
      process.stderr.write(text);
      breaches.push(...text.split('\n').filter(Boolean).map((line) => `it said: ${line}`));
    });
  }
  return widget;
}

/** Another copy, which ends at once. */
function startAgain() {
  const { status } = spawnSync(program, { env: environment, stdio: 'ignore', timeout: LAST_WORDS });
  if (status !== 0) breaches.push(`a second copy ended with ${status}`);
}

/** The processes that bear our mark. */
function left() {
  return readdirSync('/proc').filter((id) => /^\d+$/.test(id) && Number(id) !== process.pid).filter((id) => {
    try {
      return readFileSync(`/proc/${id}/environ`, 'latin1').split('\0').includes(mark);
    } catch {
      return false; // gone, or not ours
    }
  });
}

class Soak {
  #began = Date.now();
  #widget = start();
  #ended = once(this.#widget, 'exit');
  #gauge = new Gauge(this.#widget.pid, 'kestrelbay');
  #surroundings;
  #person;
  #threads = Infinity; // the fewest at rest

  constructor(surroundings) {
    this.#surroundings = surroundings;
  }

  get #runs() {
    return this.#widget.exitCode === null && this.#widget.signalCode === null;
  }

  async begin() {
    this.#person = new Person(random, startAgain);
    await this.#person.arrive();
  }

  #sample(phase) {
    return { at: (Date.now() - this.#began) / SECOND, phase, ...this.#gauge.sample() };
  }

  async #act() {
    try {
      const deed = await this.#person.act();
      deeds[deed] = (deeds[deed] ?? 0) + 1;
    } catch (error) {
      if (!this.#runs) return;
      const [what] = error.message.split('\n');
      missed[what] = (missed[what] ?? 0) + 1;
    }
  }

  /** Heavy use up to a moment. */
  async use(end) {
    let [nextFiles, nextSample] = [0, 0];
    while (this.#runs && Date.now() < end) {
      if (Date.now() >= nextFiles) {
        this.#surroundings.goOn();
        nextFiles = Date.now() + SECOND;
      }
      if (Date.now() >= nextSample) {
        verdict.add(this.#sample('use'));
        nextSample = Date.now() + SAMPLES;
      }
      await this.#act();
      await pause(random.whole(0, 120));
    }
  }

  /** Nothing happens and little is shown. */
  async rest() {
    if (!this.#runs) return;
    this.#surroundings.calmDown();
    await this.#person.rest();
    let sample;
    let attempts = 3;
    do { // the indexer may have had its turn, after which threads wait half a minute for more to do
      await until('no children', () => this.#gauge.children.length === 0);
      await pause(SETTLING);
      const [wakeUps, cpu] = [this.#gauge.wakeUps, this.#gauge.cpu];
      await pause(QUIET);
      sample = { ...this.#sample('rest'), wakeUps: this.#gauge.wakeUpsSince(wakeUps) / (QUIET / SECOND),
        load: (this.#gauge.cpu - cpu) / (QUIET / SECOND) * 100 };
      this.#threads = Math.min(this.#threads, sample.threads);
    } while (--attempts > 0 && (sample.children > 0 || sample.threads > this.#threads));
    verdict.add(sample);
    console.log(`at rest after ${(sample.at / 60).toFixed(1)} minutes: ${Object.entries(sample).slice(2)
      .map(([name, value]) => `${name} ${Number.isInteger(value) ? value : value.toFixed(2)}`).join(', ')}`);
  }

  /** Ends the widget as the session would. */
  async end() {
    if (!this.#runs) {
      breaches.push(`it ended by itself with ${this.#widget.exitCode ?? this.#widget.signalCode}`);
      return;
    }
    this.#widget.kill('SIGTERM');
    const told = await Promise.race([this.#ended, pause(LAST_WORDS, ['no end'], { ref: false })]);
    if (told[0] !== 0) breaches.push(`SIGTERM ended it with ${told.join(' ')}`);
    await pause(SECOND);
    const others = left();
    if (others.length > 0) breaches.push(`left behind: ${others.join(' ')}`);
    for (const id of others) process.kill(Number(id), 'SIGKILL');
  }

  async close() {
    await this.#person?.close();
  }
}

console.log(`soak: ${minutes} minutes, seed ${seed} (KESTRELBAY_SOAK_SEED)`);
furnish();
const surroundings = new Surroundings(seed + 1);
surroundings.calmDown();
await surroundings.serve(new URL(process.env.KESTRELBAY_SITE), join(build, 'tests/loopback'));
const soak = new Soak(surroundings);
try {
  await soak.begin();
  const began = Date.now();
  const rounds = Math.max(3, Math.round(minutes * MINUTE / ROUND));
  for (let round = 1; round <= rounds; ++round) {
    await soak.use(began + minutes * MINUTE * round / rounds - SETTLING - QUIET);
    await soak.rest();
  }
} catch (error) {
  run('import', ['-silent', '-window', 'root', join(checkout, 'build/soak.png')]);
  breaches.push(`${error.stack}\nbuild/soak.png shows the screen then`);
}
await soak.end();
await soak.close();
surroundings.close();

verdict.writeCsv(join(checkout, 'build/soak.csv'));
const told = (counts) => Object.entries(counts).map(([what, count]) => `${what} ${count}`).join(', ');
const sum = (counts) => Object.values(counts).reduce((total, count) => total + count, 0);
breaches.push(...verdict.tell({ sanitized: process.env.KESTRELBAY_SANITIZE !== '' }));
if (sum(missed) > sum(deeds) / 10) breaches.push('too much could not be done, so the rest says little');
console.log(`\nDone: ${told(deeds)}; asked over the network: ${told(surroundings.asked)}\nNot possible at the moment: ${told(missed) || 'nothing'}\n`);
for (const breach of new Set(breaches)) console.log(`FAILED ${breach}`);
console.log(breaches.length > 0 ? 'soak: FAILED' : 'soak: nothing has grown or gone wrong');
process.exitCode = breaches.length > 0 ? 1 : 0;
