// A run of the indexer leaves the statistics old or new and the history sound, and the next run makes
// all good.

import assert from 'node:assert/strict';
import { closeSync, cpSync, existsSync, openSync, readdirSync, readFileSync } from 'node:fs';
import { rmSync, statSync, truncateSync, writeFileSync, writeSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, scratchFolder } from '../companions/scratch.mjs';
import { onFiles, runWith, tryFaults } from './Faults.mjs';

const BUILD = process.env.KESTRELBAY_BUILD;
const INDEXER = join(BUILD, 'bin/kestrelbay-indexer');
const OPERATIONS = join(BUILD, 'tests/fault_operations');
const TOLD = ['stats.json', 'codex-limits.json'];
const withJournal = (name) => [name, `${name}-wal`, `${name}-shm`];
const FILES = [...TOLD, ...withJournal('history.sqlite')];
/** What the next run may find, and clear away. */
const JOURNAL = 'history.sqlite-journal';
const PAGE = 4096; // bytes of the history
const LINE = /^kestrelbay-indexer: [^\n]+\n$/;

/** A home with transcripts, and data folders of it. */
class Home {
  constructor(context) {
    this.scratch = scratchFolder(context);
    this.data = join(this.scratch, 'data');
    this.home = join(this.scratch, 'home');
    const words = ['--small', '--idle', '--days', '12', '--seed', '5'];
    const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), this.home, ...words]);
    assert.equal(made.status, 0, made.stderr);
  }

  index(variables, data, ...words) {
    const folders = ['--claude', join(this.home, '.claude'), '--codex', join(this.home, '.codex')];
    return runWith(variables, INDEXER, ...words, '--data', data, ...folders);
  }

  /** A run that nothing disturbs. */
  indexWell(data = this.data, ...words) {
    const { status, stdout, stderr } = this.index({}, data, ...words);
    assert.deepEqual([status, stderr], [0, '']);
    return stdout;
  }

  /** A data folder as a run without disturbance leaves it. */
  indexed(name) {
    const data = join(this.scratch, name);
    this.indexWell(data);
    return data;
  }

  /** Puts a data folder back to what it was; to nothing where nothing is named. */
  begin(before) {
    rmSync(this.data, { recursive: true, force: true });
    if (before) cpSync(before, this.data, { recursive: true, preserveTimestamps: true });
  }

  /** The largest transcripts of both assistants. */
  transcripts() {
    return ['.claude/projects', '.codex/sessions'].map((part) => {
      const folder = join(this.home, part);
      const files = readdirSync(folder, { recursive: true })
        .map((name) => join(folder, String(name)))
        .filter((file) => file.endsWith('.jsonl'));
      return files.reduce((one, other) =>
        statSync(one).size < statSync(other).size ? other : one,
      );
    });
  }

  /** Cuts the largest transcripts in half, at a line's end; gives a way back. */
  shorten() {
    const whole = this.transcripts().map((path) => ({ path, bytes: readFileSync(path) }));
    for (const { path, bytes } of whole) {
      truncateSync(path, bytes.lastIndexOf(10, bytes.length / 2) + 1);
    }
    return () => whole.forEach(({ path, bytes }) => appendTo(path, bytes));
  }

  /** Everything that has to hold in a data folder, whatever happened. */
  assertWhole(before, after, files = FILES) {
    if (!existsSync(this.data)) return;
    for (const name of readdirSync(this.data)) {
      assert.ok(files.includes(name), `${name} is left behind`);
      assert.equal(statSync(join(this.data, name)).mode & 0o077, 0, name);
    }
    for (const name of TOLD) {
      const text = textOf(this.data, name);
      assert.ok([textOf(before, name), textOf(after, name)].includes(text), `${name}: ${text}`);
    }
    // Looked at in a copy, so that nothing is repaired before the next run.
    const copy = `${this.data}-copy`;
    cpSync(this.data, copy, { recursive: true });
    const { status, stdout } = runWith({}, OPERATIONS, 'sound', join(copy, 'history.sqlite'));
    rmSync(copy, { recursive: true });
    assert.deepEqual([status, stdout], [0, 'ok\n']);
  }
}

function appendTo(path, bytes) {
  const length = statSync(path).size;
  writeFileSync(path, bytes.subarray(length), { flag: 'a' });
}

/** A file's text; nothing where there is no file, or no folder. */
function textOf(folder, name) {
  const path = folder && join(folder, name);
  return path && existsSync(path) ? readFileSync(path, 'utf8') : undefined;
}

/** Runs over the folder that was before, which without a fault becomes what is after. */
function runs(home, before, after) {
  return (faulty) => {
    home.begin(before);
    const { status, stdout, stderr } = home.index(faulty, home.data);
    assert.equal(stdout, '');
    assert.match(stderr, status === 0 ? /^(kestrelbay-indexer: [^\n]+\n)?$/ : LINE);
    home.assertWhole(before, after, [...FILES, JOURNAL]);
    const isNew = TOLD.every((name) => textOf(home.data, name) === textOf(after, name));
    assert.ok(isNew || status === 1);
    home.indexWell();
    for (const name of TOLD) assert.equal(textOf(home.data, name), textOf(after, name));
    home.assertWhole(after, after);
    return status === 0 ? 'went on' : `failed, ${isNew ? 'new there' : 'old kept'}`;
  };
}

test('a first run', (context) => {
  const home = new Home(context);
  const calls = ['open', 'read', 'write', 'sync', 'rename', 'truncate', 'remove', 'mkdir'];
  const play = runs(home, undefined, home.indexed('after'));
  tryFaults(context, { operation: 'first run', faults: onFiles, calls, below: home.data, play });
});

test('a run after sessions have grown', (context) => {
  const home = new Home(context);
  const grow = home.shorten();
  const before = home.indexed('before');
  grow();
  const play = runs(home, before, home.indexed('after'));
  const calls = ['open', 'read', 'write', 'sync', 'rename'];
  tryFaults(context, { operation: 'next run', faults: onFiles, calls, below: home.data, play });
});

test('a report', (context) => {
  const home = new Home(context);
  const grow = home.shorten();
  const before = home.indexed('before');
  grow();
  const after = home.indexed('after');
  const words = ['report', 'sessions', '--json'];
  const expected = home.indexWell(after, ...words);
  const play = (faulty) => {
    home.begin(before);
    const { status, stdout, stderr } = home.index(faulty, home.data, ...words);
    assert.equal(stdout, status === 0 ? expected : '');
    assert.match(stderr, status === 0 ? /^(kestrelbay-indexer: [^\n]+\n)?$/ : LINE);
    home.assertWhole(before, before);
    assert.equal(home.indexWell(home.data, ...words), expected);
    home.indexWell();
    home.assertWhole(after, after);
    return status === 0 ? 'reported' : 'failed';
  };
  const calls = ['open', 'read', 'write'];
  tryFaults(context, { operation: 'report', faults: onFiles, calls, below: home.data, play });
});

test('a run over a damaged history', (context) => {
  const home = new Home(context);
  const before = home.indexed('before');
  home.transcripts().forEach((path) => rmSync(path)); // the history alone knows of these
  const file = openSync(join(before, 'history.sqlite'), 'r+');
  writeSync(file, Buffer.alloc(PAGE), 0, PAGE, PAGE);
  closeSync(file);
  const [damaged] = withJournal('history-damaged-1.sqlite');
  const play = (faulty) => {
    home.begin(before);
    const { status, stdout, stderr } = home.index(faulty, home.data);
    assert.equal(stdout, '');
    assert.match(stderr, /^(kestrelbay-indexer: [^\n]+\n){1,2}$/);
    const next = home.index({}, home.data);
    assert.deepEqual([next.status, next.stdout], [0, '']);
    assert.ok(`${stderr}${next.stderr}`.includes(damaged));
    home.indexWell();
    home.assertWhole(before, before, [...FILES, ...withJournal(damaged)]);
    assert.ok(existsSync(join(home.data, damaged)));
    for (const name of TOLD) assert.equal(textOf(home.data, name), textOf(before, name));
    return status === 0 ? 'made anew' : 'failed, old kept';
  };
  const operation = 'damaged history';
  const calls = ['open', 'read', 'write', 'sync', 'rename', 'remove'];
  tryFaults(context, { operation, faults: onFiles, calls, below: home.data, play });
});
