import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import {
  chmodSync,
  copyFileSync,
  existsSync,
  mkdirSync,
  readdirSync,
  readFileSync,
  renameSync,
  rmSync,
  statSync,
  symlinkSync,
  unlinkSync,
  utimesSync,
  writeFileSync,
} from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, runAtHome, scratchFolder, writeProgram } from './scratch.mjs';

const FIRST_RELEASE = 1_700_000_000;
const SECOND_RELEASE = FIRST_RELEASE + 86_400;

/** Replaces the companion of the installation, as an update does. */
function publish(setup, text, time) {
  writeFileSync(setup.companion, text);
  utimesSync(setup.companion, time, time);
}

/** An installation and an empty home. */
function install(context) {
  const root = scratchFolder(context);
  const [bin, share, home] = ['bin', 'share/kestrelbay', 'home'].map((name) => join(root, name));
  for (const folder of [bin, share, home]) mkdirSync(folder, { recursive: true });
  copyFileSync(join(checkout, 'packaging/kestrelbay-launch'), join(bin, 'kestrelbay-launch'));
  writeProgram(join(bin, 'kestrelbay-indexer'), '#!/bin/sh\n');
  writeProgram(join(bin, 'kestrelbay'), '#!/bin/sh\nprintf "[%s]" "$@"; exit 5\n');
  writeFileSync(join(share, 'i18n.json'), '{}');
  const data = join(home, '.kestrelbay');
  const setup = {
    bin,
    share,
    home,
    data,
    companion: join(share, 'usage-stats.mjs'),
    copy: join(data, 'usage-stats.mjs'),
    launcher: join(bin, 'kestrelbay-launch'),
  };
  publish(setup, '// one', FIRST_RELEASE);
  return setup;
}

const fill = (setup) => runAtHome(setup.home, setup.launcher, ['--fill-only']);

function fillQuietly(setup) {
  const { status, stdout, stderr } = fill(setup);
  assert.deepEqual({ status, stdout, stderr }, { status: 0, stdout: '', stderr: '' });
}

const copyOf = (setup) => readFileSync(setup.copy, 'utf8');

/** Names, contents and dates of everything in the data folder. */
const snapshot = (setup) =>
  readdirSync(setup.data)
    .sort()
    .map((name) => join(setup.data, name))
    .map((path) => [path, readFileSync(path, 'utf8'), statSync(path).mtimeMs, statSync(path).ino]);

test('a new home gets everything, with modes and dates, for its owner alone', (context) => {
  const setup = install(context);
  fillQuietly(setup);
  assert.deepEqual(readdirSync(setup.data).sort(), [
    '.installed',
    'i18n.json',
    'kestrelbay-indexer',
    'usage-stats.mjs',
  ]);
  assert.equal(statSync(setup.data).mode & 0o777, 0o700);
  assert.equal(statSync(join(setup.data, 'kestrelbay-indexer')).mode & 0o777, 0o755);
  assert.equal(statSync(setup.copy).mtimeMs, FIRST_RELEASE * 1000);
});

test('with nothing to do nothing is touched', (context) => {
  const setup = install(context);
  fillQuietly(setup);
  const before = snapshot(setup);
  fillQuietly(setup);
  assert.deepEqual(snapshot(setup), before);
});

test('an update replaces what an earlier launch has put there', (context) => {
  const setup = install(context);
  fillQuietly(setup);
  publish(setup, '// two', SECOND_RELEASE);
  fillQuietly(setup);
  assert.equal(copyOf(setup), '// two');
  unlinkSync(setup.copy);
  fillQuietly(setup);
  assert.equal(copyOf(setup), '// two');
});

test('what a power cut or a lost mode has spoilt is repaired', (context) => {
  const setup = install(context);
  fillQuietly(setup);
  const indexer = join(setup.data, 'kestrelbay-indexer');
  writeFileSync(setup.copy, '');
  chmodSync(indexer, 0o644);
  fillQuietly(setup);
  assert.equal(copyOf(setup), '// one');
  assert.equal(statSync(indexer).mode & 0o100, 0o100);
});

test('what the user has put, changed or linked there stays', (context) => {
  const changes = {
    changed: (setup) => writeFileSync(setup.copy, '// mine'),
    'changed before the first launch was recorded': (setup) => {
      writeFileSync(setup.copy, '// mine');
      unlinkSync(join(setup.data, '.installed'));
    },
    'linked, even to what was there': (setup) => {
      const elsewhere = join(setup.home, 'mine.mjs');
      renameSync(setup.copy, elsewhere);
      symlinkSync(elsewhere, setup.copy);
    },
  };
  for (const [name, change] of Object.entries(changes)) {
    const setup = install(context);
    fillQuietly(setup);
    change(setup);
    // Old, so that its age does not protect it.
    utimesSync(setup.copy, FIRST_RELEASE, FIRST_RELEASE);
    publish(setup, '// two', SECOND_RELEASE);
    fillQuietly(setup);
    assert.notEqual(copyOf(setup), '// two', name);
  }
});

test('a newer file is not replaced by an older installation', (context) => {
  const setup = install(context);
  publish(setup, '// two', SECOND_RELEASE);
  fillQuietly(setup);
  publish(setup, '// one', FIRST_RELEASE);
  fillQuietly(setup);
  assert.equal(copyOf(setup), '// two');
});

test('two launches at once leave one good copy and a list that knows it', async (context) => {
  const setup = install(context);
  const launches = Array.from({ length: 4 }, () =>
    spawn(join(checkout, 'tools/with-home'), [setup.home, setup.launcher, '--fill-only'], {
      stdio: ['ignore', 'ignore', 'inherit'],
    }),
  );
  const endings = await Promise.all(launches.map((launch) => once(launch, 'exit')));
  assert.deepEqual(
    endings.map(([status]) => status),
    [0, 0, 0, 0],
  );
  assert.equal(readdirSync(setup.data).length, 4);
  publish(setup, '// two', SECOND_RELEASE);
  fillQuietly(setup);
  assert.equal(copyOf(setup), '// two');
});

test('the widget gets the arguments, also where the folder cannot be filled', (context) => {
  const obstacles = {
    none: [() => {}, /^$/],
    "a file in the folder's place": [
      ({ data }) => writeFileSync(data, ''),
      /cannot create .*\.kestrelbay\n$/,
    ],
    'a folder that takes no files': [
      ({ data }) => symlinkSync('/proc', data),
      /cannot write .* to .*\.kestrelbay\n$/,
    ],
    'an incomplete installation': [
      ({ share }) => rmSync(join(share, 'i18n.json')),
      /i18n\.json is missing/,
    ],
  };
  for (const [name, [prepare, complaint]] of Object.entries(obstacles)) {
    const setup = install(context);
    prepare(setup);
    const started = runAtHome(setup.home, setup.launcher, ['--first', 'two words']);
    assert.equal(started.stdout, '[--first][two words]', name);
    assert.equal(started.status, 5, name);
    assert.match(started.stderr, complaint, name);
    assert.ok(started.stderr.split('\n').length <= 2, name);
    assert.equal(fill(setup).status, name === 'none' ? 0 : 1, name);
  }
});

test("the home directory is the user database's, whatever HOME says", (context) => {
  const setup = install(context);
  const elsewhere = scratchFolder(context);
  const { status } = runAtHome(setup.home, 'env', [
    `HOME=${elsewhere}`,
    setup.launcher,
    '--fill-only',
  ]);
  assert.equal(status, 0);
  assert.ok(existsSync(setup.copy));
  assert.deepEqual(readdirSync(elsewhere), []);
});

test('the launcher finds its installation through a link', (context) => {
  const setup = install(context);
  const link = join(setup.home, 'kestrelbay');
  symlinkSync(setup.launcher, link);
  assert.equal(runAtHome(setup.home, link, ['--fill-only']).status, 0);
  assert.equal(copyOf(setup), '// one');
});
