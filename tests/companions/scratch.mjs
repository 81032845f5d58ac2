// A folder that goes away with its test, and programs run in it.

import { spawnSync } from 'node:child_process';
import { chmodSync, mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const checkout = join(dirname(fileURLToPath(import.meta.url)), '..', '..');

/** A new folder; `test` is the context that node:test hands over. */
export function scratchFolder(test) {
  const folder = mkdtempSync(join(tmpdir(), 'kestrelbay-test.'));
  test.after(() => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

export function writeProgram(path, text) {
  mkdirSync(dirname(path), { recursive: true });
  writeFileSync(path, text);
  chmodSync(path, 0o755);
}

/** Runs a program to its end; its output is text. */
export function run(program, args, options) {
  return spawnSync(program, args, { encoding: 'utf8', maxBuffer: 64 * 1024 * 1024, ...options });
}

/** The same with `home` as the user's home directory. */
export function runAtHome(home, program, args, options) {
  return run(join(checkout, 'tools/with-home'), [home, program, ...args], options);
}
