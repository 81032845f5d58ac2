import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, runAtHome, scratchFolder, writeProgram } from './scratch.mjs';

const FIRST_RELEASE = 1_700_000_000;
const SECOND_RELEASE = FIRST_RELEASE + 86_400;

/** An installation and an empty home. */
function install(context) {
  const root = scratchFolder(context);
  const [bin, share, home] = ['bin', 'share/kestrelbay', 'home'].map((name) => join(root, name));
  for (const folder of [bin, share, home]) fs.mkdirSync(folder, { recursive: true });
  fs.writeFileSync(join(share, 'i18n.json'), '{}');
  writeProgram(join(bin, 'kestrelbay-indexer'), '#!/bin/sh\n');
  writeProgram(join(bin, 'kestrelbay'), '#!/bin/sh\nprintf "[%s]" "$@"; exit 5\n');
  const launcher = join(bin, 'kestrelbay-launch');
  fs.copyFileSync(join(checkout, 'packaging/kestrelbay-launch'), launcher);

  const data = join(home, '.kestrelbay');
  const copy = join(data, 'usage-stats.mjs');
  const launch = (...args) => runAtHome(home, launcher, args);
  /** Fills the data folder without a word; the result is its companion's text. */
  const fill = () => {
    const { status, stdout, stderr } = launch('--fill-only');
    assert.deepEqual({ status, stdout, stderr }, { status: 0, stdout: '', stderr: '' });
    return fs.readFileSync(copy, 'utf8');
  };
  /** Replaces the companion of the installation, as an update does. */
  const publish = (text, time) => {
    fs.writeFileSync(join(share, 'usage-stats.mjs'), text);
    fs.utimesSync(join(share, 'usage-stats.mjs'), time, time);
  };
  publish('// one', FIRST_RELEASE);
  return { share, home, data, copy, launcher, launch, fill, publish };
}

test('launches fill the folder, leave alone what is right and repair the rest', (context) => {
  const { data, copy, fill } = install(context);
  assert.equal(fill(), '// one');
  const changes = () =>
    fs.readdirSync(data).sort().map((name) => `${name} ${fs.statSync(join(data, name)).ctimeMs}`);
  const before = changes();
  assert.match(before.join(), /^\.installed .*i18n\.json .*kestrelbay-indexer .*usage-stats\.mjs /);
  assert.equal(fs.statSync(data).mode & 0o777, 0o700);
  assert.equal(fs.statSync(copy).mtimeMs, FIRST_RELEASE * 1000);
  const indexer = join(data, 'kestrelbay-indexer');
  assert.equal(fs.statSync(indexer).mode & 0o777, 0o755);
  fill();
  assert.deepEqual(changes(), before);
  fs.writeFileSync(copy, '');
  fs.chmodSync(indexer, 0o644);
  assert.equal(fill(), '// one');
  assert.equal(fs.statSync(indexer).mode & 0o777, 0o744);
});

test('an update replaces what a launch put there, an older release does not', (context) => {
  const { copy, fill, publish } = install(context);
  fill();
  publish('// two', SECOND_RELEASE);
  assert.equal(fill(), '// two');
  publish('// one', FIRST_RELEASE);
  assert.equal(fill(), '// two');
  fs.unlinkSync(copy);
  assert.equal(fill(), '// one');
});

test('what the user has put, changed or linked there stays', (context) => {
  const changes = [
    ({ copy }) => fs.writeFileSync(copy, '// mine'),
    // As if it had been changed before the first launch was recorded.
    ({ data, copy }) => {
      fs.writeFileSync(copy, '// mine');
      fs.unlinkSync(join(data, '.installed'));
    },
    ({ home, copy }) => {
      fs.renameSync(copy, join(home, 'mine.mjs'));
      fs.symlinkSync(join(home, 'mine.mjs'), copy);
    },
  ];
  for (const change of changes) {
    const setup = install(context);
    setup.fill();
    change(setup);
    // Old, so that its age does not protect it.
    fs.utimesSync(setup.copy, FIRST_RELEASE, FIRST_RELEASE);
    setup.publish('// two', SECOND_RELEASE);
    assert.notEqual(setup.fill(), '// two', change);
  }
});

test('launches at once leave one good copy and a list that knows it', async (context) => {
  const { home, data, launcher, fill, publish } = install(context);
  const launches = Array.from({ length: 4 }, () =>
    spawn(join(checkout, 'tools/with-home'), [home, launcher, '--fill-only'], { stdio: 'ignore' }),
  );
  const endings = await Promise.all(launches.map((launch) => once(launch, 'exit')));
  assert.deepEqual(endings, Array(4).fill([0, null]));
  assert.equal(fs.readdirSync(data).length, 4);
  publish('// two', SECOND_RELEASE);
  assert.equal(fill(), '// two');
});

test('the widget gets the arguments, also where the folder cannot be filled', (context) => {
  const obstacles = [
    [() => {}, /^$/],
    [({ data }) => fs.writeFileSync(data, ''), /^.*cannot create .*\.kestrelbay\n$/],
    [({ data }) => fs.symlinkSync('/proc', data), /^.*cannot write .* to .*\.kestrelbay\n$/],
    [({ share }) => fs.rmSync(join(share, 'i18n.json')), /^.*i18n\.json is missing.*\n$/],
  ];
  for (const [prepare, complaint] of obstacles) {
    const setup = install(context);
    prepare(setup);
    const { status, stdout, stderr } = setup.launch('--first', 'two words');
    assert.deepEqual([status, stdout], [5, '[--first][two words]'], stderr);
    assert.match(stderr, complaint);
    assert.equal(setup.launch('--fill-only').status, stderr === '' ? 0 : 1, stderr);
  }
});

test("called through a link, it fills the user database's home, whatever HOME says", (context) => {
  const { home, copy, launcher } = install(context);
  const link = join(home, 'kestrelbay');
  fs.symlinkSync(launcher, link);
  const { status } = runAtHome(home, 'env', ['HOME=/nowhere', link, '--fill-only']);
  assert.equal(status, 0);
  assert.equal(fs.readFileSync(copy, 'utf8'), '// one');
});
