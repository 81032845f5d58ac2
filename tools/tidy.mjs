#!/usr/bin/env node
// tidy.mjs BUILD FILE...: clang-tidy of the sources that BUILD compiles. A header stands for the sources that
// include it. Prints each finding once, and exits with 1 if there are any.
//
// Nearly all the time goes into the headers of the system, which every source includes. So sources that lie in
// one folder and are compiled alike are checked together, in one unit that includes them. Some do not go
// together, for example because both name something alike; those are checked again without the others.

import { execFile, execFileSync } from 'node:child_process';
import { copyFileSync, existsSync, mkdirSync, readFileSync, realpathSync, rmSync, writeFileSync } from 'node:fs';
import { cpus } from 'node:os';
import { dirname, join, relative, resolve } from 'node:path';

const mostInUnit = 8;
const build = resolve(process.argv[2]);
const scratch = join(build, 'tidy');

/** How each source of ours is compiled: where, and with which options. Generated sources are left out. */
function readCommands() {
  const commands = new Map();
  for (const { file, command, directory } of JSON.parse(readFileSync(join(build, 'compile_commands.json')))) {
    if (file.endsWith('.cpp') && !file.startsWith(`${build}/`) && !commands.has(file)) {
      commands.set(file, { directory, options: command.replace(/ -o \S+ -c \S+$/, '') });
    }
  }
  return commands;
}

function allHeaders() {
  const names = execFileSync('git', ['ls-files', '-z', '-co', '--exclude-standard', '*.h'], { encoding: 'utf8' });
  return names.split('\0').filter((name) => existsSync(name)).map((name) => resolve(name));
}

/** The sources among `files`, and those that include a header among them, directly or not. */
function sourcesOf(files, commands) {
  const reached = new Set(files);
  if (files.some((file) => file.endsWith('.h'))) {
    const includes = [...commands.keys(), ...allHeaders()].flatMap((file) => [
      ...readFileSync(file, 'utf8').matchAll(/^#include "(?:\.\.\/)*(.+)"/gm),
    ].map(([, name]) => ({ file, name: `/${name}` })));
    for (const header of reached) {
      includes.filter(({ name }) => header.endsWith(name)).forEach(({ file }) => reached.add(file));
    }
  }
  return [...reached].filter((file) => commands.has(file)).sort();
}

/** Lists of sources to check together. Neighbours, which are most likely to clash, come into different ones. */
function unitsOf(sources, commands) {
  const alike = new Map();
  for (const source of sources) {
    const key = `${dirname(source)} ${commands.get(source).options}`;
    alike.set(key, [...(alike.get(key) ?? []), source]);
  }
  return [...alike.values()].flatMap((group) => {
    const units = Array.from({ length: Math.ceil(group.length / mostInUnit) }, () => []);
    group.forEach((source, index) => units[index % units.length].push(source));
    return units;
  });
}

/** The configuration that holds for the sources in a folder: its own, or that of the nearest folder above. */
function configurationOf(folder) {
  const file = join(folder, '.clang-tidy');
  return existsSync(file) || folder === process.cwd() ? file : configurationOf(dirname(folder));
}

/** What clang-tidy says of the sources as one unit; `number` names its files. */
function check(sources, { directory, options }, number) {
  const folder = join(scratch, String(number));
  const unit = join(folder, 'unit.cpp');
  rmSync(folder, { recursive: true, force: true });
  mkdirSync(folder, { recursive: true });
  copyFileSync(configurationOf(dirname(sources[0])), join(folder, '.clang-tidy'));
  writeFileSync(unit, sources.map((source) => `#include "${source}"\n`).join(''));
  writeFileSync(join(folder, 'compile_commands.json'),
    JSON.stringify([{ directory, file: unit, command: `${options} -c ${unit}` }]));
  const folders = '(src|tests|bench|fuzz|build/[^/]*/include)';
  const ours = `^${process.cwd().replace(/[^\w/]/g, '\\$&')}/${folders}/.*\\.(h|cpp)$`;
  const args = ['--quiet', `--header-filter=${ours}`, '-p', folder,
    '--extra-arg=-Wno-unknown-warning-option', unit];
  return new Promise((done) => {
    execFile('clang-tidy', args, { maxBuffer: 1 << 28 }, (error, stdout, stderr) =>
      done({ failed: Boolean(error), text: stdout, noise: stderr }));
  });
}

/** The findings in clang-tidy's output, each with its notes, and with the names that files have in the checkout. */
function findingsIn(text) {
  const findings = [];
  for (const line of text.split('\n')) {
    const [, file, rest] = /^(\/[^:]+)(:\d+:\d+: .*)$/.exec(line) ?? [];
    const named = file ? `${relative(process.cwd(), realpathSync(file))}${rest}` : line;
    if (/^:\d+:\d+: (error|warning): /.test(rest ?? '')) {
      findings.push({ file: realpathSync(file), text: named });
    } else if (findings.length > 0 && line !== '') {
      findings.at(-1).text += `\n${named}`;
    }
  }
  return findings;
}

const commands = readCommands();
const sources = sourcesOf(process.argv.slice(3).map((file) => resolve(file)), commands);
const waiting = unitsOf(sources, commands);
const found = new Set();
let started = 0;
let done = 0;

function progress(checked) {
  done += checked;
  const line = `lint: clang-tidy: ${done} of ${sources.length} sources`;
  process.stderr.write(process.stderr.isTTY ? `\r${line}${done === sources.length ? '\n' : ''}` : `${line}\n`);
}

function report(finding) {
  if (!found.has(finding)) {
    found.add(finding);
    process.stderr.write(`${process.stderr.isTTY ? '\n' : ''}${finding}\n`);
  }
}

/** Checks one unit after another; what clashes with the rest of its unit waits once more. */
async function work() {
  for (let unit = waiting.shift(); unit; unit = waiting.shift()) {
    const { failed, text, noise } = await check(unit, commands.get(unit[0]), ++started);
    const findings = findingsIn(text);
    const uncompiled = findings.filter((finding) => finding.text.includes('[clang-diagnostic-'));
    if (unit.length > 1 && uncompiled.length > 0) {
      const clashing = unit.filter((source) => uncompiled.some(({ file }) => file === source));
      const rest = unit.filter((source) => !clashing.includes(source));
      waiting.push(...(rest.length > 0 && clashing.length > 0 ? [clashing, rest] : unit.map((source) => [source])));
      continue;
    }
    findings.forEach((finding) => report(finding.text));
    if (failed && findings.length === 0) {
      report(`clang-tidy failed for ${unit.join(' ')}:\n${text}${noise}`);
    }
    progress(unit.length);
  }
}

await Promise.all(cpus().map(work));
process.exitCode = found.size > 0 ? 1 : 0;
