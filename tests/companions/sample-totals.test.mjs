// The indexer against the sample home: two programs, two price tables, one truth.

import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, runAtHome, scratchFolder } from './scratch.mjs';

const INDEXER = join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-indexer');
const LONGEST_TITLE = 200;
const BUCKETS = ['input', 'output', 'cacheWrite', 'cacheRead'];

const makeHome = (args, env = process.env) =>
  run(process.execPath, [join(checkout, 'sample/make-home.mjs'), ...args], { env });

/** A sample home made in the given zone, and what the indexer says of it there. */
function indexedHome(context, zone, args) {
  const env = { ...process.env, TZ: zone };
  const home = join(scratchFolder(context), 'home');
  const data = join(home, '.kestrelbay');
  const indexer = (...words) => {
    const ended = runAtHome(home, INDEXER, ['--data', data, ...words], { env });
    assert.equal(ended.status, 0, ended.stderr);
    return ended.stdout;
  };
  makeHome([home, ...args], env);
  indexer();
  return {
    totals: JSON.parse(readFileSync(join(home, 'totals.json'), 'utf8')),
    report: (kind) => JSON.parse(indexer('report', kind, '--json')),
    stats: JSON.parse(readFileSync(join(data, 'stats.json'), 'utf8')),
  };
}

/** In whole millionths, as exactly as the indexer tells; a half is rounded up. */
const money = (cost) => (cost === null ? null : Math.round(Math.round(cost * 1e9) / 1000));
const amounts = (row) => Object.fromEntries(BUCKETS.map((bucket) => [bucket, row[bucket]]));

/** Cost by model; the spellings of one model may have rows of their own. */
function modelCosts(models) {
  const costs = {};
  for (const [id, cost] of Object.entries(models)) {
    const model = id.replace(/^.*\/|-\d{8}(?=$|\[)|\[1m\]/g, '');
    costs[model] = cost === null ? (costs[model] ?? null) : (costs[model] ?? 0) + money(cost);
  }
  return costs;
}

const dayRow = (day) => ({
  date: day.date,
  ...amounts(day),
  cost: money(day.cost),
  models: modelCosts(day.models),
});

const sessionRow = ({ title, project, cost }, tokens) => ({
  title: [...title].slice(0, LONGEST_TITLE).join(''),
  project,
  ...amounts(tokens),
  cost: money(cost),
});

const byText = (rows) => rows.map((row) => JSON.stringify(row)).sort();

for (const [zone, ...args] of [
  ['Europe/Berlin'],
  ['America/New_York', '--small', '--seed', '2'],
  ['UTC', '--small', '--seed', '3'],
]) {
  test(`a year in ${zone} is counted to the token and the cent`, (context) => {
    const home = indexedHome(context, zone, ['--until', '2026-11-21', ...args]);
    const { days, sessions } = home.totals;
    assert.deepEqual(home.report('daily').map(dayRow), days.map(dayRow));
    assert.deepEqual(
      byText(home.report('sessions').map((row) => sessionRow(row, row))),
      byText(sessions.map((row) => sessionRow(row, row.tokens))),
    );
    const estimated = (rows) => rows.filter((day) => day.estimated).map(({ date }) => date);
    assert.deepEqual(estimated(home.stats.days), estimated(days));
    assert.ok(sessions.length > 300 && days.length > 200, 'a whole year');
  });
}

test('the sample is made in an empty home only', (context) => {
  const home = join(scratchFolder(context), 'home');
  assert.equal(makeHome([home, '--days=0']).status, 2);
  assert.equal(makeHome([home, '--small', '--days=2']).status, 0);
  const before = readdirSync(home, { recursive: true });
  assert.match(makeHome([home]).stderr, /^make-home: .*already there.*\n$/);
  assert.deepEqual(readdirSync(home, { recursive: true }), before);
});
