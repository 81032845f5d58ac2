// What the widget writes is old or new, its log holds whole lines that tell what failed, and what
// could not be started once is started the next time.

import assert from 'node:assert/strict';
import { existsSync, mkdirSync, readdirSync, readFileSync, rmSync, statSync } from 'node:fs';
import { writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { beforeEach, test } from 'node:test';

import { writeProgram } from '../companions/scratch.mjs';
import { onFiles, onStarts, runWith, tryFaults } from './Faults.mjs';

const OPERATIONS = join(process.env.KESTRELBAY_BUILD, 'tests/fault_operations');
const HOME = process.env.HOME; // one that the tests may do with as they like
const DATA = join(HOME, '.kestrelbay');
const LOG = join(DATA, 'widget.log');

const operate = (variables, ...words) => runWith(variables, OPERATIONS, ...words);

function operateWell(...words) {
  const { status, stdout, stderr } = operate({}, ...words);
  assert.deepEqual([status, stderr], [0, '']);
  return stdout;
}

const textOf = (path) => (existsSync(path) ? readFileSync(path, 'utf8') : '');

/** What the log says, line by line and without the times. */
function logged() {
  const text = textOf(LOG);
  assert.match(text, /^(.*\n)*$/);
  return text.split('\n').slice(0, -1).map((line) => line.replace(/^\S+ /, ''));
}

function put(path, text) {
  mkdirSync(dirname(path), { recursive: true });
  writeFileSync(path, text, { mode: 0o600 });
}

function assertOnly(folder, ...names) {
  const found = existsSync(folder) ? readdirSync(folder) : [];
  assert.deepEqual(found.filter((name) => !names.includes(name)), []);
}

beforeEach(() => {
  for (const name of readdirSync(HOME)) rmSync(join(HOME, name), { recursive: true });
});

/** One file of ours, and how it is written. */
const WRITTEN = [
  {
    operation: 'save state.json',
    path: join(DATA, 'state.json'),
    words: (version) => ['save', version],
    failure: /^state\.json not saved: ./,
  },
  {
    operation: 'start at login',
    path: join(HOME, '.config/autostart/dev.harrowgate.kestrelbay.desktop'),
    words: (version) => ['autostart', `/opt/${version}`],
    failure: undefined, // the menu shows that it is off
  },
];

for (const { operation, path, words, failure } of WRITTEN) {
  test(`${operation}: the file is the old or the new one, and a failure is told`, (context) => {
    const text = (version) => {
      operateWell(...words(version));
      return readFileSync(path, 'utf8');
    };
    const [before, after] = [text('old'), text('new')];
    assert.notEqual(before, after);
    const play = (faulty) => {
      rmSync(DATA, { recursive: true, force: true });
      put(path, before);
      const { status, stderr } = operate(faulty, ...words('new'));
      assert.deepEqual([status, stderr], [0, '']);
      assertOnly(dirname(path), path.slice(dirname(path).length + 1), 'widget.log');
      const isNew = textOf(path) === after;
      assert.ok(isNew || textOf(path) === before);
      const lines = logged();
      // What goes on to fail does so for the log as well.
      const told = isNew || !failure ? 0 : 1;
      assert.ok(lines.length === told || (told && faulty.FAULT_WAY !== 'once'), lines);
      for (const line of lines) assert.match(line, failure);
      assert.equal(text('new'), after);
      return isNew ? 'new there' : 'old kept';
    };
    const calls = ['open', 'write', 'sync', 'rename'];
    tryFaults(context, { operation, faults: onFiles, calls, below: dirname(path), play });
  });
}

test('a first save: there is all of the state or none', (context) => {
  const path = join(DATA, 'state.json');
  operateWell('save', 'new');
  const after = readFileSync(path, 'utf8');
  const play = (faulty) => {
    rmSync(DATA, { recursive: true, force: true });
    operate(faulty, 'save', 'new');
    assertOnly(DATA, 'state.json', 'widget.log');
    const isThere = existsSync(path);
    if (isThere) assert.equal(textOf(path), after);
    operateWell('save', 'new');
    assert.equal(textOf(path), after);
    assert.equal(statSync(DATA).mode & 0o077, 0);
    return isThere ? 'new there' : 'none';
  };
  const calls = ['mkdir', 'open', 'write', 'rename'];
  tryFaults(context, { operation: 'first save', faults: onFiles, calls, below: DATA, play });
});

const LINES = '123456 89\n';
const STAMP = '\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d[+-]\\d\\d:\\d\\d';
const TWO_LINES = new RegExp(`^(${STAMP} first\n)?${STAMP} second\n$`);
for (const [operation, count] of [['append to the log', 3], ['trim the log', 30_000]]) {
  test(`${operation}: only a line that failed is missing`, (context) => {
    const before = LINES.repeat(count);
    // As many as the trimmed log keeps, and without a few where the second line trims it.
    const cut = Array.from({ length: 6 }, (_, few) => LINES.repeat(13_107 - few));
    const play = (faulty) => {
      put(LOG, before);
      const { status, stderr } = operate(faulty, 'log', 'first');
      assert.deepEqual([status, stderr], [0, '']);
      operateWell('log', 'second');
      assertOnly(DATA, 'widget.log');
      assert.equal(statSync(LOG).mode & 0o077, 0);
      const [, kept, said] = /^((?:123456 89\n)*)((?:.*\n)*)$/.exec(textOf(LOG));
      assert.ok(count > 3 ? cut.includes(kept) : kept === before, `${kept.length} bytes are kept`);
      const [, first] = TWO_LINES.exec(said) ?? assert.fail(said);
      return first ? 'logged' : 'lost the line';
    };
    const calls = count > 3 ? ['open', 'read', 'write', 'sync', 'rename'] : ['open', 'write'];
    tryFaults(context, { operation, faults: onFiles, calls, below: DATA, play });
  });
}

/** What starts a script, twice, and what is told when it was not started. */
const STARTS = [
  { operation: 'run a script', words: ['run', join(HOME, 'script')], well: '0 text', failed: '127 ' },
  { operation: 'run the indexer', words: ['index'], well: '0', failed: '127', logs: true },
  { operation: 'set the hook', words: ['hook'] },
];
const NOT_STARTED = /^indexer did not start: ./;

for (const { operation, words, well, failed, logs } of STARTS) {
  test(`${operation}: what did not start is told, and does the next time`, (context) => {
    for (const profile of ['.profile', '.zprofile']) {
      put(join(HOME, profile), 'PATH="$HOME/tools:/usr/bin:/bin"\n');
    }
    writeProgram(join(HOME, 'tools/node'), '#!/bin/sh\nexec sh "$@"\n');
    for (const path of ['script', '.kestrelbay/usage-stats.mjs', '.kestrelbay/codex-hook.mjs']) {
      put(join(HOME, path), `echo done >> '${HOME}/called'; exec cat\n`);
    }
    mkdirSync(join(HOME, '.codex'));
    const play = (faulty) => {
      for (const path of [LOG, join(HOME, 'called')]) rmSync(path, { force: true });
      const { status, stdout, stderr } = operate(faulty, ...words);
      assert.equal(status, 0, stderr);
      assert.match(stderr, /^(QProcessPrivate::createPipe: .*\n)?$/); // Qt's own line
      const runs = textOf(join(HOME, 'called')).split('\n').length - 1;
      if (well) {
        const told = [well, failed].map((line) => stdout.split('\n').filter((it) => it === line));
        assert.deepEqual([told[0].length, told[1].length], [runs, 2 - runs], stdout);
      }
      const lines = logged();
      assert.equal(lines.length, logs ? 2 - runs : 0);
      for (const line of lines) assert.match(line, NOT_STARTED);
      assert.ok(runs >= 1);
      return runs === 2 ? 'started' : 'did not start';
    };
    const faults = { faults: onStarts, calls: ['start', 'pipe', 'open'], below: '/dev/null' };
    tryFaults(context, { operation, ...faults, program: 'fault_operations', play });
  });
}
