// The real widget from its first start to its last end: files that change, a server that answers, a
// second copy, and ends of every kind. One home serves all tests, which build on one another.

import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { existsSync, mkdirSync, readFileSync, renameSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:https';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';

import { Desktop, until } from './Desktop.mjs';

const build = process.env.KESTRELBAY_BUILD;
const site = new URL(process.env.KESTRELBAY_SITE);
const data = join(homedir(), '.kestrelbay');
const claude = join(homedir(), '.claude');
const HEARTBEAT = 2000; // milliseconds

const desktop = new Desktop();
const requests = [];
let server;
let widget;
let ended;

function start() {
  widget = spawn(join(build, 'tests/kestrelbay_on_loopback'), {
    env: { ...process.env, QT_LINUX_ACCESSIBILITY_ALWAYS_ON: '1' },
    stdio: ['ignore', 'inherit', 'inherit'],
  });
  ended = once(widget, 'exit');
}

async function end(signal) {
  widget.kill(signal);
  return ended;
}

/** Replaces a file in one step, as whoever writes it does. */
function replace(path, content) {
  writeFileSync(`${path}.new`, typeof content === 'string' ? content : JSON.stringify(content));
  renameSync(`${path}.new`, path);
}

const state = () => JSON.parse(readFileSync(join(data, 'state.json'), 'utf8'));
const log = () => (existsSync(join(data, 'widget.log')) ? readFileSync(join(data, 'widget.log'), 'utf8') : '');
const statistics = (cost) => ({ providers: { claude: { totals: { today: { cost } } } }, totals: {} });

before(async () => {
  const certificate = join(build, 'tests/loopback');
  server = createServer({ key: readFileSync(`${certificate}.key`), cert: readFileSync(`${certificate}.pem`) },
    (request, response) => {
      requests.push(request);
      response.statusCode = request.url.startsWith('/api/oauth/usage') ? 429 : 200;
      response.end('{"version":"999.0"}');
    });
  server.listen(Number(site.port), 'localhost');
  await once(server, 'listening');
  mkdirSync(claude, { recursive: true });
  replace(join(claude, '.credentials.json'), { claudeAiOauth: { accessToken: 'not-a-secret' } });
});

after(() => {
  if (widget?.exitCode === null) widget.kill('SIGKILL');
  server?.closeAllConnections();
  server?.close();
});

test('the first start has nothing, and counts with the user\'s own node', async () => {
  assert.equal(spawnSync(join(build, 'bin/kestrelbay-launch'), ['--fill-only']).status, 0);
  start();
  await desktop.meet('kestrelbay');
  await until('statistics', () => existsSync(join(data, 'stats.json')));
  await desktop.starting('Today, $0.00');
  assert.equal(log(), '');
});

test('of two quick changes the newer one is shown', async () => {
  replace(join(data, 'stats.json'), statistics(1));
  replace(join(data, 'stats.json'), statistics(2.5));
  await desktop.starting('Today, $2.50');
});

test('a bad version is logged once, and the last good figures stay', async () => {
  replace(join(data, 'stats.json'), '{"days":[');
  await until('a line in the log', () => log().includes('stats.json: decode failed: '));
  await pause(2 * HEARTBEAT);
  assert.equal(log().trim().split('\n').length, 1, log());
  await desktop.starting('Today, $2.50');
});

test('a changed limit file is shown within a heartbeat', async () => {
  const resetsAt = new Date(Date.now() + 3_600_000).toISOString();
  replace(join(claude, 'usage-limits.json'),
    { updatedAt: new Date().toISOString(), fiveHour: { percent: 42.9, resetsAt } });
  const since = Date.now();
  await desktop.starting('5 hours, 42%, resets ');
  assert.ok(Date.now() - since < 2 * HEARTBEAT);
});

test('the account and the site are asked once, and an update is offered', async () => {
  const polls = () => requests.filter(({ url }) => url === '/api/oauth/usage');
  await until('a poll', () => polls().length > 0);
  assert.equal(polls()[0].headers.authorization, 'Bearer not-a-secret');
  desktop.click((await desktop.called('Refresh now')).frame);
  await pause(2 * HEARTBEAT);
  assert.equal(polls().length, 1);
  assert.ok(!log().includes('not-a-secret'));
  assert.equal(requests.filter(({ url }) => /^\/api\/version\?os=macos&v=[\d.]+$/.test(url)).length, 1);
  await desktop.called('Version 999.0 is available');
});

test('a second copy ends at once and leaves the first alone', () => {
  const second = spawnSync(join(build, 'tests/kestrelbay_on_loopback'), { timeout: 10_000 });
  assert.equal(second.status, 0, String(second.stderr));
  assert.equal(widget.exitCode, null);
});

test('it comes back as it was left', async () => {
  desktop.click((await desktop.called('Statistics')).frame);
  desktop.click((await desktop.called('Weeks')).frame);
  desktop.click((await desktop.called('Codex')).frame);
  await desktop.starting('This week · ');
  assert.deepEqual(await end('SIGTERM'), [0, null]);
  const { tab, provider, expanded, hidden, latestVersion } = state();
  assert.deepEqual({ tab, provider, expanded, hidden }, { tab: 'weeks', provider: 'codex', expanded: true, hidden: false });
  assert.equal(latestVersion, '999.0');
  start();
  await desktop.meet('kestrelbay');
  await desktop.starting('This week · ');
});

test('a killed copy leaves nothing in the way of the next, of which one stays', async () => {
  assert.deepEqual(await end('SIGKILL'), [null, 'SIGKILL']);
  const copies = Array.from({ length: 8 }, () => spawn(join(build, 'tests/kestrelbay_on_loopback'), { stdio: 'ignore' }));
  const left = () => copies.filter(({ exitCode }) => exitCode === null);
  await until('one copy', () => left().length === 1);
  await pause(500);
  assert.equal(left().length, 1);
  assert.ok(copies.every((copy) => copy.exitCode === 0 || copy === left()[0]));
  [widget] = left();
  ended = once(widget, 'exit');
  assert.deepEqual(await end('SIGINT'), [0, null]);
  assert.equal(state().tab, 'weeks');
});
