#!/usr/bin/env node
// Writes the home directory of a developer who used Claude Code and Codex for a year, and what it adds up to.

import { existsSync, mkdirSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { parseArgs } from 'node:util';

import { writeCodex } from './codex.mjs';
import { at, dayOf, HOUR, parseDay, shiftDay } from './days.mjs';
import { Files } from './files.mjs';
import { writeHazards } from './hazards.mjs';
import { Ledger } from './ledger.mjs';
import { Random } from './random.mjs';
import { REPLIES } from './texts.mjs';
import { writeWorkdays } from './workdays.mjs';

const USAGE = `usage: make-home.mjs OUT [--seed N] [--until YYYY-MM-DD] [--days N] [--small] [--idle]

Writes a sample home below OUT and what its transcripts add up to into OUT/totals.json.

  --seed N            another number makes another year (default 1)
  --until YYYY-MM-DD  the last day, whole (default: today, up to this moment)
  --days N            how many days (default 365)
  --small             without the line of nine megabytes
  --idle              without ordinary days of Claude Code, only what makes counting hard
`;

class UsageError extends Error {}

function wholeNumber(text, name, least) {
  if (!/^\d{1,9}$/.test(text) || Number(text) < least) {
    throw new UsageError(`--${name} wants a whole number from ${least} on, not "${text}"`);
  }
  return Number(text);
}

function readArguments() {
  const { values, positionals } = parseArgs({
    allowPositionals: true,
    options: {
      seed: { type: 'string', default: '1' },
      until: { type: 'string' },
      days: { type: 'string', default: '365' },
      small: { type: 'boolean', default: false },
      idle: { type: 'boolean', default: false },
      help: { type: 'boolean', short: 'h', default: false },
    },
  });
  if (values.help) return { help: true };
  if (positionals.length !== 1) throw new UsageError('give one folder to write to');
  const lastDay = values.until === undefined ? dayOf(Date.now()) : parseDay(values.until);
  if (lastDay === undefined) {
    throw new UsageError(`--until wants a day like 2026-11-21, not "${values.until}"`);
  }
  return {
    out: positionals[0],
    seed: wholeNumber(values.seed, 'seed', 0),
    count: wholeNumber(values.days, 'days', 1),
    lastDay,
    // Absent when the last day counts as whole.
    until: values.until === undefined ? Date.now() : undefined,
    small: values.small,
    idle: values.idle,
  };
}

function writeLimits(home) {
  const now = home.until ?? at(home.days.at(-1), 22, 30);
  const moment = (time) => new Date(time).toISOString();
  const limits = {
    updatedAt: moment(now),
    fiveHour: { percent: 37, resetsAt: moment(now + 2.4 * HOUR) },
    sevenDay: { percent: 64, resetsAt: moment(now + 61 * HOUR) },
  };
  home.files.append('.claude/usage-limits.json', `${JSON.stringify(limits, null, 2)}\n`, now);
}

function makeHome({ out, seed, count, lastDay, until, small, idle }) {
  if (existsSync(join(out, '.claude'))) {
    throw new Error(`${join(out, '.claude')} is already there; give a new folder`);
  }
  const home = {
    random: new Random(seed),
    files: new Files(),
    ledger: new Ledger(),
    days: Array.from({ length: count }, (_, index) => shiftDay(lastDay, index - count + 1)),
    replies: REPLIES,
    until,
    small,
  };
  if (!idle) writeWorkdays(home);
  writeHazards(home);
  writeCodex(home);
  writeLimits(home);

  const { days, sessions } = home.ledger;
  const zone = Intl.DateTimeFormat().resolvedOptions().timeZone;
  mkdirSync(out, { recursive: true });
  home.files.writeBelow(out);
  writeFileSync(join(out, 'totals.json'), `${JSON.stringify({ zone, days, sessions }, null, 1)}\n`);
}

try {
  const options = readArguments();
  if (options.help) process.stdout.write(USAGE);
  else makeHome(options);
} catch (error) {
  const wrongUse = error instanceof UsageError || error.code?.startsWith('ERR_PARSE_ARGS');
  process.stderr.write(`make-home: ${error.message}\n${wrongUse ? USAGE : ''}`);
  process.exitCode = wrongUse ? 2 : 1;
}
