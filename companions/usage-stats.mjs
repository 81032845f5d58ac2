#!/usr/bin/env node
// Brings the statistics of this folder up to date by running the native indexer that lies in it.
// Its own arguments are the indexer's; its exit status is the indexer's, 128 + n after signal n.

import { spawn } from 'node:child_process';
import { statSync } from 'node:fs';
import { constants } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const folder = dirname(fileURLToPath(import.meta.url));
const program = join(folder, 'kestrelbay-indexer');

const MISSING = 'is missing; start Kestrelbay with kestrelbay-launch, which puts it there';
const REASONS = {
  ENOENT: MISSING,
  EACCES: `may not be executed; try: chmod u+x '${program}'`,
};

function fail(reason) {
  process.stderr.write(`usage-stats: ${program} ${reason}\n`);
  process.exitCode = 1;
}

// A shell would take an empty file for a script that does nothing, with success.
if (statSync(program, { throwIfNoEntry: false })?.size === 0) {
  fail(MISSING);
  process.exit();
}

// Whoever ends this script means the indexer, which would go on alone. Before it starts, so that
// no signal comes too early.
for (const signal of ['SIGTERM', 'SIGINT', 'SIGHUP'])
  process.on(signal, () => indexer.kill(signal));

const indexer = spawn(program, ['--data', folder, ...process.argv.slice(2)], { stdio: 'inherit' });

indexer.on('error', (error) =>
  fail(REASONS[error.code] ?? `cannot be started: ${error.message}`),
);

indexer.on('exit', (status, signal) => {
  process.exitCode = status ?? 128 + constants.signals[signal];
});
