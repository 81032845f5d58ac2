// The indexer against the sample home: two programs, two price tables, one truth.

import assert from 'node:assert/strict';
import { readdirSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { assertReports } from './sampleTotals.mjs';
import { checkout, run, runAtHome, scratchFolder } from './scratch.mjs';

const INDEXER = join(process.env.KESTRELBAY_BUILD, 'bin/kestrelbay-indexer');

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

for (const [zone, ...args] of [
  ['Europe/Berlin'],
  ['America/New_York', '--small', '--seed', '2'],
  ['UTC', '--small', '--seed', '3'],
]) {
  test(`a year in ${zone} is counted to the token and the cent`, (context) => {
    const home = indexedHome(context, zone, ['--until', '2026-11-21', ...args]);
    const { days, sessions } = home.totals;
    assertReports(home.report, home.totals);
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
