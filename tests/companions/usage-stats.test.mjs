import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { chmodSync, copyFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, scratchFolder, writeProgram } from './scratch.mjs';

/** A data folder with the script and an indexer made of shell commands; null for no indexer. */
function dataFolder(context, commands) {
  const folder = scratchFolder(context);
  const script = join(folder, 'usage-stats.mjs');
  copyFileSync(join(checkout, 'companions/usage-stats.mjs'), script);
  const indexer = join(folder, 'kestrelbay-indexer');
  if (commands !== null) writeProgram(indexer, `#!/bin/sh\n${commands}\n`);
  return { folder, script, indexer };
}

test('the indexer gets the data folder and all arguments, and its output comes through', (context) => {
  const { folder, script } = dataFolder(context, 'printf "[%s]" "$@"; echo trouble >&2');
  const { status, stdout, stderr } = run(process.execPath, [script, 'report', 'two words']);
  assert.equal(stdout, `[--data][${folder}][report][two words]`);
  assert.equal(stderr, 'trouble\n');
  assert.equal(status, 0);
});

test("the exit status is the indexer's", (context) => {
  const { script, indexer } = dataFolder(context, '');
  for (const [commands, expected] of [
    ['exit 7', 7],
    ['kill -KILL $$', 137],
    ['kill -TERM $$', 143],
  ]) {
    writeFileSync(indexer, `#!/bin/sh\n${commands}\n`);
    assert.equal(run(process.execPath, [script]).status, expected, commands);
  }
});

test('a missing indexer is named with its place, an empty one too', (context) => {
  const { script, indexer } = dataFolder(context, null);
  for (const arrange of [() => {}, () => writeProgram(indexer, '')]) {
    arrange();
    const { status, stderr } = run(process.execPath, [script]);
    assert.equal(status, 1);
    assert.equal(stderr.trim().split('\n').length, 1);
    assert.ok(stderr.includes(`${indexer} is missing`), stderr);
  }
});

test('an indexer that may not be executed is named with the remedy', (context) => {
  const { script, indexer } = dataFolder(context, '');
  chmodSync(indexer, 0o644);
  const { status, stderr } = run(process.execPath, [script]);
  assert.equal(status, 1);
  assert.ok(stderr.includes(`chmod u+x '${indexer}'`), stderr);
});

test('a signal ends the indexer too', async (context) => {
  const { script } = dataFolder(context, 'echo $$; exec sleep 60');
  for (const [signal, expected] of [
    ['SIGTERM', 143],
    ['SIGINT', 130],
    ['SIGHUP', 129],
  ]) {
    const running = spawn(process.execPath, [script], { stdio: ['ignore', 'pipe', 'inherit'] });
    const [started] = await once(running.stdout, 'data');
    running.kill(signal);
    const [status] = await once(running, 'exit');
    assert.equal(status, expected, signal);
    assert.throws(() => process.kill(Number(started), 0), { code: 'ESRCH' }, signal);
  }
});
