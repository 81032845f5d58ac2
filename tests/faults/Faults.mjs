// Makes the n-th call of a kind fail, for one n after another, and has an operation tell each time
// what became of its files.
//
// KESTRELBAY_FAULTS=all tries every n; else some are chosen, KESTRELBAY_SEED telling which. Where
// KESTRELBAY_FAULTS_RESULTS names a file, a line of JSON for each kind of fault is added to it.

import assert from 'node:assert/strict';
import { appendFileSync, readFileSync, writeFileSync } from 'node:fs';
import { constants } from 'node:os';
import { join } from 'node:path';

import { Random } from '../../sample/random.mjs';
import { run, scratchFolder } from '../companions/scratch.mjs';

const ALL = process.env.KESTRELBAY_FAULTS === 'all';
const RESULTS = process.env.KESTRELBAY_FAULTS_RESULTS;
const SEED = Number(process.env.KESTRELBAY_SEED ?? 1);
const CHOSEN = 2;
const PATIENCE = 60_000; // milliseconds; whoever takes longer hangs

const BUILD = process.env.KESTRELBAY_BUILD;
const PRELOAD = [process.env.LD_PRELOAD, join(BUILD, 'tests/faulty_calls.so')];

/** What can go wrong with files, by the calls that an operation makes. */
export const onFiles = {
  open: [['EACCES', 'once'], ['EMFILE', 'once']],
  read: [['EIO', 'once'], ['EIO', 'lasting']],
  write: [['ENOSPC', 'once'], ['ENOSPC', 'half'], ['ENOSPC', 'lasting']],
  sync: [['EIO', 'once']],
  rename: [['EACCES', 'once']],
  truncate: [['EIO', 'once']],
  remove: [['EACCES', 'once']],
  mkdir: [['ENOSPC', 'once']],
};

/** What can go wrong with starting a program. */
export const onStarts = {
  start: [['EAGAIN', 'once']],
  pipe: [['EMFILE', 'once']],
  open: [['EMFILE', 'once']],
};

/** Some of `1..count`. */
function chosen(count, random) {
  const numbers = new Set();
  while (numbers.size < Math.min(CHOSEN, count)) numbers.add(random.whole(1, count));
  return numbers;
}

function* numbersFrom(first) {
  for (let number = first; ; number += 1) yield number;
}

/** Runs a program with variables of the environment on top; it must end by itself. */
export function runWith(variables, program, ...words) {
  const env = { ...process.env, ...variables };
  const ended = run(program, words, { env, timeout: PATIENCE, killSignal: 'SIGKILL' });
  assert.equal(ended.signal, null, `ended by a signal, or never: ${ended.stderr}`);
  return ended;
}

class Trial {
  constructor(record, kind) {
    this.record = record;
    this.kind = kind;
  }

  /** Plays an operation whose n-th call fails; none does where n is 0. */
  meet(at, play) {
    const { call, error, way, below, program } = this.kind;
    writeFileSync(this.record, Buffer.alloc(8));
    const outcome = play({
      LD_PRELOAD: PRELOAD.filter(Boolean).join(':'),
      FAULT_CALL: call,
      FAULT_AT: String(at),
      FAULT_ERROR: String(constants.errno[error]),
      FAULT_WAY: way,
      FAULT_BELOW: below ?? '',
      FAULT_PROGRAM: program ?? '',
      FAULT_RECORD: this.record,
    });
    const counts = readFileSync(this.record);
    return { outcome, counted: counts.readUInt32LE(0), failed: counts.readUInt32LE(4) };
  }

  play(numbers, play) {
    const outcomes = {};
    let tried = 0;
    for (const at of numbers) {
      const { outcome, failed } = this.#told(at, play);
      if (failed === 0) break; // beyond the last
      outcomes[outcome] = (outcomes[outcome] ?? 0) + 1;
      tried += 1;
    }
    assert.ok(tried > 0, `${this.#title(1)}: there is no such call`);
    return { tried, outcomes };
  }

  #told(at, play) {
    try {
      return this.meet(at, play);
    } catch (error) {
      error.message = `${this.#title(at)}: ${error.message}`;
      throw error;
    }
  }

  #title(at) {
    const { call, error, way } = this.kind;
    return `${call} ${at} (${error}, ${way})`;
  }
}

/**
 * Tries all kinds of faults in the calls that are named on an operation.
 *
 * `play` is called with the environment that makes its program meet the fault. It checks what is
 * there afterwards and tells what became of it in a word or two. `below` is how the paths begin
 * that count, `program` which program's calls do.
 */
export function tryFaults(context, { operation, faults, calls, below, program, play }) {
  const record = join(scratchFolder(context), 'record');
  const random = new Random(SEED);
  for (const call of calls) {
    const kinds = faults[call].map(([error, way]) => ({ call, error, way, below, program }));
    const count = ALL ? undefined : new Trial(record, kinds[0]).meet(0, play).counted;
    for (const kind of kinds) {
      const { error, way } = kind;
      const numbers = ALL ? numbersFrom(1) : chosen(count, random);
      const { tried, outcomes } = new Trial(record, kind).play(numbers, play);
      const result = { operation, call, error, way, tried, outcomes };
      if (RESULTS) appendFileSync(RESULTS, `${JSON.stringify(result)}\n`);
    }
  }
}
