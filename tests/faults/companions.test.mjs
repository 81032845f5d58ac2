// The launcher fills the data folder with whole files of one release or the other and knows them for
// its own afterwards.

import assert from 'node:assert/strict';
import { cpSync, existsSync, mkdirSync, readdirSync, readFileSync, rmSync } from 'node:fs';
import { statSync, utimesSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, scratchFolder, writeProgram } from '../companions/scratch.mjs';
import { onFiles, runWith, tryFaults } from './Faults.mjs';

const DATA = join(process.env.HOME, '.kestrelbay');
const NAMES = ['i18n.json', 'kestrelbay-indexer', 'usage-stats.mjs'];
const FIRST_RELEASE = 1_700_000_000;

/** An installation whose files say which release they are of. */
class Installation {
  constructor(context) {
    const root = scratchFolder(context);
    this.share = join(root, 'share/kestrelbay');
    this.bin = join(root, 'bin');
    for (const folder of [this.share, this.bin]) mkdirSync(folder, { recursive: true });
    this.launcher = join(this.bin, 'kestrelbay-launch');
    cpSync(join(checkout, 'packaging/kestrelbay-launch'), this.launcher);
    rmSync(DATA, { recursive: true, force: true });
  }

  publish(release) {
    const time = FIRST_RELEASE + release * 86_400;
    for (const name of NAMES) {
      const path = join(name.startsWith('kestrelbay') ? this.bin : this.share, name);
      writeProgram(path, `release ${release}\n`.repeat(1000));
      utimesSync(path, time, time);
    }
  }

  fill(variables) {
    return runWith(variables, this.launcher, '--fill-only');
  }

  /** Fills the data folder with a release; nothing disturbs it. */
  update(release) {
    this.publish(release);
    const { status, stderr } = this.fill({});
    assert.deepEqual([status, stderr], [0, '']);
    assert.deepEqual(releases(), [release, release, release]);
  }
}

/** Which release each file is of; each must be whole. */
function releases() {
  return NAMES.map((name) => {
    const path = join(DATA, name);
    if (!existsSync(path)) return 0;
    const text = readFileSync(path, 'utf8');
    const release = Number(/^release (\d)\n/.exec(text)?.[1]);
    assert.ok(text === `release ${release}\n`.repeat(1000), `${name} is not whole`);
    assert.ok(statSync(path).mode & 0o100);
    return release;
  });
}

function assertNothingElse() {
  const others = existsSync(DATA) ? readdirSync(DATA) : [];
  assert.deepEqual(others.filter((name) => ![...NAMES, '.installed'].includes(name)), []);
}

// Each try takes the starts of a hundred programs, so there are fewer ways to fail.
const onShell = {
  ...onFiles,
  open: [['EACCES', 'once']],
  write: [['ENOSPC', 'half'], ['ENOSPC', 'lasting']],
  start: [['ENOMEM', 'once']],
};

for (const before of [0, 1]) {
  const operation = before === 0 ? 'fill the data folder' : 'update the data folder';
  test(`${operation}: each file is whole, and the next release is taken up`, (context) => {
    const installation = new Installation(context);
    const kept = join(scratchFolder(context), 'kept');
    if (before !== 0) {
      installation.update(before);
      cpSync(DATA, kept, { recursive: true, preserveTimestamps: true });
    }
    const play = (faulty) => {
      rmSync(DATA, { recursive: true, force: true });
      if (before !== 0) cpSync(kept, DATA, { recursive: true, preserveTimestamps: true });
      installation.publish(2);
      const { status, stderr } = installation.fill(faulty);
      assertNothingElse();
      const there = releases();
      assert.deepEqual(there.filter((release) => ![before, 2].includes(release)), []);
      const isNew = there.every((release) => release === 2);
      // The shell tells by itself what it cannot start.
      const own = faulty.FAULT_CALL === 'start' ? '(\\S+: (line \\d+: )?(fork|wait_for): [^\\n]+\\n)*' : '';
      const told = new RegExp(`^${own}(kestrelbay-launch: [^\\n]+\\n)?$`).test(stderr);
      assert.ok(status === 0 ? isNew : told && stderr !== '', `${status} ${there} ${stderr}`);
      installation.update(2);
      installation.update(3);
      assertNothingElse();
      const left = isNew ? 'new there' : there.includes(2) ? 'some new' : 'old kept';
      return status === 0 ? 'went on' : `failed, ${left}`;
    };
    const faults = { faults: onShell, below: DATA, play, operation };
    const calls = ['open', 'write', 'sync', 'rename', before === 0 ? 'mkdir' : 'read'];
    tryFaults(context, { ...faults, calls });
    tryFaults(context, { ...faults, calls: ['start'], program: 'bash' });
  });
}

test('usage-stats.mjs tells that the indexer did not start', (context) => {
  const folder = scratchFolder(context);
  const script = join(folder, 'usage-stats.mjs');
  cpSync(join(checkout, 'companions/usage-stats.mjs'), script);
  writeProgram(join(folder, 'kestrelbay-indexer'), '#!/bin/sh\necho indexed\n');
  const play = (faulty) => {
    const { status, stdout, stderr } = runWith(faulty, process.execPath, script);
    if (status === 0) return 'started';
    assert.deepEqual([status, stdout], [1, '']);
    assert.match(stderr, /^usage-stats: [^\n]*cannot be started: [^\n]*\n$/);
    assert.equal(runWith({}, process.execPath, script).stdout, 'indexed\n');
    return 'did not start';
  };
  const faults = { start: [['EAGAIN', 'once']] };
  const operation = 'usage-stats.mjs';
  tryFaults(context, { operation, faults, calls: ['start'], program: 'node', play });
});
