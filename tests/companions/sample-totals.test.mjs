// The indexer against the sample home: two programs, two price tables, one truth.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { dayOf, shiftDay, weekday } from '../../sample/days.mjs';
import { checkout, run, runAtHome, scratchFolder } from './scratch.mjs';

const INDEXER = join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-indexer');
const LONGEST_TITLE = 200;
const BUCKETS = ['input', 'output', 'cacheWrite', 'cacheRead'];

function succeed(result) {
  assert.equal(result.status, 0, result.stderr);
  return result.stdout;
}

/** A sample home, indexed in the given zone. */
function indexedHome(context, zone, args) {
  const env = { ...process.env, TZ: zone };
  const home = join(scratchFolder(context), 'home');
  const data = join(home, '.kestrelbay');
  succeed(run(process.execPath, [join(checkout, 'sample/make-home.mjs'), home, ...args], { env }));
  const indexer = (...words) =>
    succeed(runAtHome(home, INDEXER, ['--data', data, ...words], { env }));
  indexer();
  return {
    totals: JSON.parse(readFileSync(join(home, 'totals.json'), 'utf8')),
    report: (kind) => JSON.parse(indexer('report', kind, '--json')),
    stats: () => JSON.parse(readFileSync(join(data, 'stats.json'), 'utf8')),
  };
}

/** In whole millionths, as exactly as the indexer tells; a half is rounded up. */
const money = (cost) => (cost === null ? null : Math.round(Math.round(cost * 1e9) / 1000));
const amounts = (row) => Object.fromEntries(BUCKETS.map((bucket) => [bucket, row[bucket]]));

const baseModel = (id) =>
  id
    .replace(/^.*\//, '')
    .replace('[1m]', '')
    .replace(/-\d{8}$/, '');

/** Cost by model; the spellings of one model may have rows of their own. */
function modelCosts(models) {
  const costs = {};
  for (const [id, cost] of Object.entries(models)) {
    const model = baseModel(id);
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

const zones = [
  ['Europe/Berlin', []],
  ['America/New_York', ['--small', '--seed', '2']],
  ['UTC', ['--small', '--seed', '3']],
];

for (const [zone, args] of zones) {
  test(`every day and session of a year in ${zone} is counted to the token and the cent`, (context) => {
    const home = indexedHome(context, zone, ['--until', '2026-11-21', ...args]);
    const { days, sessions } = home.totals;
    assert.deepEqual(home.report('daily').map(dayRow), days.map(dayRow));
    assert.deepEqual(
      byText(home.report('sessions').map((row) => sessionRow(row, row))),
      byText(sessions.map((row) => sessionRow(row, row.tokens))),
    );
    assert.deepEqual(
      home
        .stats()
        .days.filter((day) => day.estimated)
        .map(({ date }) => date),
      days.filter((day) => day.estimated).map(({ date }) => date),
    );
  });
}

/** The first and the last day of each span, seen from `today`; weeks begin on Monday. */
function spansSeenFrom(today) {
  const monday = shiftDay(today, -((weekday(today) + 6) % 7));
  const first = `${today.slice(0, 7)}-01`;
  const lastOfPrevious = shiftDay(first, -1);
  return {
    today: [today, today],
    yesterday: [shiftDay(today, -1), shiftDay(today, -1)],
    week: [monday, today],
    lastWeek: [shiftDay(monday, -7), shiftDay(monday, -1)],
    month: [first, today],
    lastMonth: [`${lastOfPrevious.slice(0, 7)}-01`, lastOfPrevious],
  };
}

test('the spans that the panel shows are those of the calendar', (context) => {
  const today = dayOf(Date.now());
  const home = indexedHome(context, process.env.TZ ?? 'UTC', ['--small', '--days', '70']);
  const { totals } = home.stats();
  if (dayOf(Date.now()) !== today) return context.skip('midnight passed');

  for (const [name, [first, last]] of Object.entries(spansSeenFrom(today))) {
    const days = home.totals.days.filter(({ date }) => date >= first && date <= last);
    const sum = (value) => days.reduce((total, day) => total + value(day), 0);
    const { cost, tokens } = totals[name];
    assert.equal(money(cost), money(sum((day) => day.cost ?? 0)), name);
    for (const bucket of ['input', 'output', 'cacheWrite']) {
      assert.equal(
        tokens[bucket],
        sum((day) => day[bucket]),
        `${name} ${bucket}`,
      );
    }
  }
});
