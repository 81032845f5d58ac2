#!/usr/bin/env node
// Brings the statistics of this folder up to date by running the native indexer that lies in it.
// Its own arguments are the indexer's; its exit status is the indexer's, 128 + n after signal n.

import { spawn } from 'node:child_process';
import { closeSync, openSync, readSync, statSync } from 'node:fs';
import { constants } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const folder = dirname(fileURLToPath(import.meta.url));
const program = join(folder, 'kestrelbay-indexer');

/** How a program ends that is damaged. */
const CRASHES = ['SIGSEGV', 'SIGBUS', 'SIGILL', 'SIGABRT', 'SIGFPE', 'SIGTRAP', 'SIGSYS'];
const RENEWAL = 'remove it and start Kestrelbay with kestrelbay-launch, which puts it there anew';
const MISSING = 'is missing; start Kestrelbay with kestrelbay-launch, which puts it there';
const REASONS = {
  ENOENT: MISSING,
  EACCES: `may not be executed; try: chmod u+x '${program}'`,
};

function fail(reason) {
  process.stderr.write(`usage-stats: ${program} ${reason}\n`);
  process.exitCode = 1;
}

/** Whether a program for Linux ends before the table of its sections, which comes last. */
function isCut(size) {
  if (size === 0) return false;
  const head = Buffer.alloc(64);
  const file = openSync(program);
  readSync(file, head, 0, head.length, 0);
  closeSync(file);
  if (!head.toString('latin1').startsWith('\x7fELF\x02\x01')) return false;
  const sections = head.readUInt16LE(58) * head.readUInt16LE(60);
  return size < head.length || size < head.readBigUInt64LE(40) + BigInt(sections);
}

/** What can be seen from outside that is wrong with the program, if anything. */
function flaw() {
  const size = statSync(program, { throwIfNoEntry: false })?.size;
  // A shell would take an empty file for a script that does nothing, with success, and the rest
  // of a program for whatever it looks like.
  if (size === 0) return MISSING;
  try {
    return isCut(size ?? 0) ? `is not whole; ${RENEWAL}` : undefined;
  } catch {
    return undefined; // what may only be executed is executed
  }
}

const wrong = flaw();
if (wrong) {
  fail(wrong);
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
  if (CRASHES.includes(signal)) fail(`was ended by ${signal}; if that happens again, ${RENEWAL}`);
  process.exitCode = status ?? 128 + constants.signals[signal];
});
