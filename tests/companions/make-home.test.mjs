import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { readdirSync, readFileSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, scratchFolder } from './scratch.mjs';

const MAKER = join(checkout, 'sample/make-home.mjs');

function makeHome(context, args, env = {}) {
  const out = join(scratchFolder(context), 'home');
  const { status, stderr } = run(process.execPath, [MAKER, out, ...args], {
    env: { ...process.env, ...env },
  });
  assert.deepEqual({ status, stderr }, { status: 0, stderr: '' });
  return out;
}

const totalsOf = (home) => JSON.parse(readFileSync(join(home, 'totals.json'), 'utf8'));

/** One number for the names, contents and dates of a whole tree. */
function fingerprint(folder, hash = createHash('sha256')) {
  for (const entry of readdirSync(folder, { withFileTypes: true }).sort((a, b) =>
    a.name < b.name ? -1 : 1,
  )) {
    const path = join(folder, entry.name);
    hash.update(`${entry.name}\n`);
    if (entry.isDirectory()) fingerprint(path, hash);
    else
      hash
        .update(readFileSync(path))
        .update(entry.name === 'totals.json' ? '' : String(statSync(path).mtimeMs));
  }
  return hash.copy().digest('hex');
}

test('the same seed, day and zone make the same home, any other one another', (context) => {
  const usual = ['--days', '40', '--until', '2026-11-21', '--small'];
  const first = fingerprint(makeHome(context, usual));
  assert.equal(fingerprint(makeHome(context, usual)), first);
  assert.notEqual(fingerprint(makeHome(context, [...usual, '--seed', '2'])), first);
  assert.notEqual(fingerprint(makeHome(context, [...usual, '--until', '2026-11-20'])), first);
  const inZone = (TZ) => fingerprint(makeHome(context, usual, { TZ }));
  assert.notEqual(inZone('America/New_York'), inZone('Asia/Tokyo'));
});

test('the books agree with themselves: days, models and sessions have the same sums', (context) => {
  const { days, sessions } = totalsOf(makeHome(context, ['--until', '2026-11-21', '--small']));
  const sum = (rows, value) => rows.reduce((total, row) => total + value(row), 0);
  for (const bucket of ['input', 'output', 'cacheWrite', 'cacheRead']) {
    assert.equal(
      sum(days, (day) => day[bucket]),
      sum(sessions, (session) => session.tokens[bucket]),
      bucket,
    );
  }
  const spent = sum(days, (day) => day.cost ?? 0);
  assert.ok(Math.abs(spent - sum(sessions, (session) => session.cost ?? 0)) < 1e-6);
  assert.ok(Math.abs(spent - sum(days, (day) => sum(Object.values(day.models), Number))) < 1e-6);
  assert.ok(sessions.length > 300 && days.length > 200, 'a whole year');
});

test('special requests cost what was worked out by hand', (context) => {
  const { sessions, days } = totalsOf(makeHome(context, ['--until', '2026-11-21', '--small']));
  const costs = {
    // 7 in, 1000 out, 60000 read, 2000 and 1000 written, at 5, 25, 0.5, 6.25 and 10, times 2
    'Fast mode at twice the price': 0.15507,
    // the same, times 6
    'Fast mode at six times the price': 0.46521,
    // at 4, 20, 0.2, 5 and 8, times one half
    'Batch costs half': 0.025014,
    // at 2, 10, 0.2, 2.5 and 4, then with reads at 0.1
    'Before the price of cache reads fell': 0.031014,
    'After the price of cache reads fell': 0.025014,
    // 1000, 500, 98000 and 1000 (5m) at 0.1, 0.5, 0.01 and 0.125; then 1001 (1h) at 0.5, 2.5, 0.05 and 1
    'A prompt at the limit of the tier': 0.001455 + 0.007651,
    'A model nobody knows': null,
    'A tier without a known price': null,
    'Fast mode without a known price': null,
    'A model before its own price list': null,
  };
  for (const [title, cost] of Object.entries(costs)) {
    const session = sessions.find((candidate) => candidate.title === title);
    assert.equal(session?.cost?.toFixed(9), cost?.toFixed(9), title);
    if (cost === null) {
      const end = new Date(session.end);
      const day = days.find(({ date }) => date === `${end.toLocaleDateString('sv')}`);
      assert.equal(day.estimated, true, title);
    }
  }
});

test('without a last day the home ends now, and today and yesterday are alive', (context) => {
  const before = Date.now();
  const { days, sessions } = totalsOf(makeHome(context, ['--days', '3', '--small']));
  const midnight = new Date(before).setHours(0, 0, 0, 0);
  const today = sessions.filter(({ end }) => Date.parse(end) >= midnight);
  assert.ok(
    today.length > 1 &&
      today.every(
        ({ start, end }) => Date.parse(start) >= midnight && Date.parse(end) <= Date.now(),
      ),
  );
  assert.deepEqual(
    days.slice(-2).map(({ cost }) => cost > 0),
    [true, true],
  );
});

test('wrong use is told and writes nothing', (context) => {
  const folder = scratchFolder(context);
  const out = join(folder, 'home');
  for (const args of [
    [],
    [out, 'more'],
    [out, '--until', '2026-02-30'],
    [out, '--days', '0'],
    [out, '--seed', 'x'],
    [out, '--what'],
  ]) {
    const { status, stderr } = run(process.execPath, [MAKER, ...args]);
    assert.equal(status, 2, args.join(' '));
    assert.match(stderr, /^make-home: .+\nusage: /, args.join(' '));
  }
  assert.deepEqual(readdirSync(folder), []);
});

test('a home with transcripts in it is left alone', (context) => {
  const home = makeHome(context, ['--days', '2', '--small']);
  const before = fingerprint(home);
  const { status, stderr } = run(process.execPath, [MAKER, home]);
  assert.equal(status, 1);
  assert.match(stderr, /^make-home: .*already there.*\n$/);
  assert.equal(fingerprint(home), before);
});
