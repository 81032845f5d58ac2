// What a sample home adds up to, in the form of the indexer's reports.

import assert from 'node:assert/strict';

const LONGEST_TITLE = 200;
const BUCKETS = ['input', 'output', 'cacheWrite', 'cacheRead'];

/** In whole millionths, as exactly as the indexer tells; a half is rounded up. */
const money = (cost) => (cost === null ? null : Math.round(Math.round(cost * 1e9) / 1000));
const amounts = (row) => Object.fromEntries(BUCKETS.map((bucket) => [bucket, row[bucket]]));

/** Cost by model; all spellings of one are one. */
const modelCosts = (models) =>
  Object.fromEntries(Object.entries(models).map(([model, cost]) => [model, money(cost)]));

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

/** `report` gives the parsed rows of a kind of report; `totals` are the sample's own account. */
export function assertReports(report, { days, sessions }) {
  assert.deepEqual(report('daily').map(dayRow), days.map(dayRow));
  assert.deepEqual(
    byText(report('sessions').map((row) => sessionRow(row, row))),
    byText(sessions.map((row) => sessionRow(row, row.tokens))),
  );
}
