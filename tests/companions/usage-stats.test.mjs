import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { copyFileSync, readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, scratchFolder, writeProgram } from './scratch.mjs';

/** A data folder with the script, and with an indexer made of shell commands if they are given. */
function dataFolder(context, commands) {
  const folder = scratchFolder(context);
  const script = join(folder, 'usage-stats.mjs');
  copyFileSync(join(checkout, 'companions/usage-stats.mjs'), script);
  const indexer = join(folder, 'kestrelbay-indexer');
  if (commands !== undefined) writeProgram(indexer, `#!/bin/sh\n${commands}\n`);
  return { folder, script, indexer };
}

test('the indexer gets all arguments; its output and its exit status come through', (context) => {
  for (const [ending, expected] of [['exit 0', 0], ['exit 7', 7], ['kill -KILL $$', 137]]) {
    const { folder, script } = dataFolder(context, `printf "[%s]" "$@"; echo bad >&2; ${ending}`);
    const { status, stdout, stderr } = run(process.execPath, [script, 'report', 'two words']);
    const output = `[--data][${folder}][report][two words]`;
    assert.deepEqual([status, stdout, stderr], [expected, output, 'bad\n']);
  }
});

test('an indexer that cannot run is named, with the remedy', (context) => {
  const { script, indexer } = dataFolder(context);
  const complain = (complaint) => {
    const { status, stderr } = run(process.execPath, [script]);
    assert.equal(status, 1);
    assert.ok(stderr.includes(complaint) && /^.+\n$/.test(stderr), stderr);
  };
  complain(`${indexer} is missing`);
  writeFileSync(indexer, '#!/bin/sh\n', { mode: 0o644 });
  complain(`chmod u+x '${indexer}'`);
  writeProgram(indexer, '');
  complain(`${indexer} is missing`);
  // Cut within what the system looks at, and behind it.
  const program = readFileSync(process.execPath);
  for (const size of [20, 200, 50_000, program.length - 1]) {
    writeFileSync(indexer, program.subarray(0, size));
    complain(`${indexer} is not whole`);
  }
});

test('an indexer that crashes does not do so without a word', (context) => {
  const { script, indexer } = dataFolder(context, 'kill -SEGV $$');
  const { status, stderr } = run(process.execPath, [script]);
  assert.equal(status, 139);
  assert.ok(stderr.startsWith(`usage-stats: ${indexer} was ended by SIGSEGV; `), stderr);
});

test('a signal ends the indexer too', async (context) => {
  const { script } = dataFolder(context, 'echo $$; exec sleep 60');
  for (const [signal, expected] of Object.entries({ SIGTERM: 143, SIGINT: 130, SIGHUP: 129 })) {
    const running = spawn(process.execPath, [script], { stdio: ['ignore', 'pipe', 'inherit'] });
    const [started] = await once(running.stdout, 'data');
    running.kill(signal);
    const [status] = await once(running, 'exit');
    assert.equal(status, expected, signal);
    assert.throws(() => process.kill(Number(started), 0), { code: 'ESRCH' }, signal);
  }
});
