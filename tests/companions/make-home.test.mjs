import assert from 'node:assert/strict';
import { existsSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run, scratchFolder } from './scratch.mjs';

const make = (args, env = {}) =>
  run(process.execPath, [join(checkout, 'sample/make-home.mjs'), ...args], {
    env: { ...process.env, ...env },
  });

function makeHome(context, args, env) {
  const home = join(scratchFolder(context), 'home');
  const { status, stderr } = make([home, '--small', ...args], env);
  assert.deepEqual({ status, stderr }, { status: 0, stderr: '' });
  return home;
}

/** Names, checksums and dates of all files. */
function listing(home) {
  const sums = run('find', ['.', '-type', 'f', '-exec', 'sha256sum', '{}', '+'], { cwd: home });
  const dates = run('find', ['.claude', '-type', 'f', '-printf', '%p %T@\n'], { cwd: home });
  return (sums.stdout + dates.stdout).split('\n').sort();
}

test('the same seed, day and zone make the same home, any other one another', (context) => {
  const listingFor = (until, seed, TZ) =>
    listing(makeHome(context, ['--days', '40', '--until', until, '--seed', seed], { TZ }));
  const first = listingFor('2026-11-21', '1', 'Europe/Berlin');
  assert.deepEqual(listingFor('2026-11-21', '1', 'Europe/Berlin'), first);
  assert.notDeepEqual(listingFor('2026-11-21', '2', 'Europe/Berlin'), first);
  assert.notDeepEqual(listingFor('2026-11-20', '1', 'Europe/Berlin'), first);
  assert.notDeepEqual(listingFor('2026-11-21', '1', 'Asia/Tokyo'), first);
});

test('special requests cost what was worked out by hand', (context) => {
  const home = makeHome(context, ['--until', '2026-11-21']);
  const { sessions } = JSON.parse(readFileSync(join(home, 'totals.json'), 'utf8'));
  for (const [title, cost] of [
    // 7 in, 1000 out, 60000 read, 2000 and 1000 written, at 5, 25, 0.5, 6.25 and 10, times 6
    ['Fast mode at six times the price', 0.46521],
    // the same at 4, 20, 0.2, 5 and 8, times one half
    ['Batch costs half', 0.025014],
    // 1000, 500, 98000 and 1000 (5m) at 0.1, 0.5, 0.01 and 0.125;
    // then 1001 (1h) at 0.5, 2.5, 0.05 and 1
    ['A prompt at the limit of the tier', 0.001455 + 0.007651],
    ['A tier without a known price', null],
  ]) {
    const session = sessions.find((candidate) => candidate.title === title);
    assert.ok(session, title);
    assert.equal(session.cost?.toFixed(9), cost?.toFixed(9), title);
  }
});

test('wrong use and a home in use are refused, and nothing is written', (context) => {
  const unmade = join(scratchFolder(context), 'home');
  for (const wrong of ['more', '--until=2026-02-30', '--days=0', '--seed=x', '--what']) {
    const { status, stderr } = make([unmade, wrong]);
    assert.equal(status, 2, wrong);
    assert.match(stderr, /^make-home: .+\nusage: /, wrong);
  }
  assert.ok(!existsSync(unmade));

  const home = makeHome(context, ['--days', '2']);
  const before = listing(home);
  const { status, stderr } = make([home]);
  assert.equal(status, 1);
  assert.match(stderr, /^make-home: .*already there.*\n$/);
  assert.deepEqual(listing(home), before);
});
