#!/usr/bin/env node
// test-cases.mjs BUILD NAME: runs the cases with NAME in their names, of GoogleTest's and of Node's tests.

import { execFileSync, spawnSync } from 'node:child_process';
import { readFileSync } from 'node:fs';

const [build, name] = process.argv.slice(2);

/** The arguments with which one of ctest's tests runs these cases alone; undefined if it has none. */
function withCases({ command = [], properties }) {
  const environment = properties.find((property) => property.name === 'ENVIRONMENT')?.value ?? [];
  const last = command.at(-1) ?? '';
  if (last.endsWith('.test.mjs')) {
    const titles = readFileSync(last, 'utf8').split('\n').filter((line) => /^\s*test\(/.test(line));
    const pattern = name.replace(/[^\w\s]/g, '\\$&');
    return titles.some((title) => title.includes(name))
      ? [...environment, ...command.slice(0, -1), `--test-name-pattern=${pattern}`, last] : undefined;
  }
  if (!last.endsWith('_tests')) {
    return undefined;
  }
  const filtered = [...environment, ...command, `--gtest_filter=*${name}*`];
  const listed = execFileSync('env', [...filtered, '--gtest_list_tests'], { encoding: 'utf8' });
  return listed.includes('\n  ') ? filtered : undefined;
}

const listed = execFileSync('ctest', ['--test-dir', build, '--show-only=json-v1'], { encoding: 'utf8', maxBuffer: 1 << 26 });
const chosen = JSON.parse(listed).tests.map(withCases).filter(Boolean);
for (const args of chosen) {
  if (spawnSync('env', args, { stdio: 'inherit' }).status !== 0) {
    process.exitCode = 1;
  }
}
if (chosen.length === 0) {
  console.error(`dev: no test and no case has "${name}" in its name`);
  process.exitCode = 1;
}
