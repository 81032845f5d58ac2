// What the real widget leaves on the disk, gives to its scripts and sends, in a session whose settings
// are careless: nobody but the user may read it, and the account's token is nowhere but in its question.

import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
import { once } from 'node:events';
import { chmodSync, existsSync, mkdirSync, readdirSync, readFileSync, statSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:https';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

import { Desktop, until } from './Desktop.mjs';

const build = process.env.KESTRELBAY_BUILD;
const site = new URL(process.env.KESTRELBAY_SITE);
const home = homedir();
const data = join(home, '.kestrelbay');
const temporary = join(home, 'tmp');
const report = join(home, 'script.json');
const TOKEN = 'token-that-is-nowhere-else';

// The sync script does the counting where there is one; this one tells what it was given.
const SCRIPT = `
import { readdirSync, readlinkSync, writeFileSync } from 'node:fs';
const link = (name) => { try { return readlinkSync('/proc/self/fd/' + name); } catch { return ''; } };
writeFileSync(${JSON.stringify(report)}, JSON.stringify({ arguments: process.argv, environment: process.env,
  mask: process.umask(), files: readdirSync('/proc/self/fd').map(link) }));
`;

const requests = [];
let server;
let widget;
let given; // the files that were there before the widget

const everyFile = () => readdirSync(home, { recursive: true }).map((name) => join(home, String(name)));

before(async () => {
  const certificate = join(build, 'tests/loopback');
  server = createServer({ key: readFileSync(`${certificate}.key`), cert: readFileSync(`${certificate}.pem`) },
    (request, response) => {
      requests.push({ url: request.url, headers: request.headers });
      // Elsewhere on the same computer: the token may not go there either.
      response.writeHead(302, { Location: `https://127.0.0.1:${site.port}/elsewhere` }).end();
    });
  server.listen(Number(site.port), 'localhost');
  await once(server, 'listening');

  mkdirSync(temporary);
  mkdirSync(join(home, '.claude'));
  writeFileSync(join(home, '.claude/.credentials.json'), JSON.stringify({ claudeAiOauth: { accessToken: TOKEN } }));
  assert.equal(spawnSync(join(build, 'bin/kestrelbay-launch'), ['--fill-only']).status, 0);
  writeFileSync(join(data, 'usage-sync.mjs'), SCRIPT);
  writeFileSync(join(data, 'stats.json'), '{"days":['); // something for the log
  chmodSync(data, 0o755);
  given = new Set([...everyFile(), report]);

  widget = spawn('/bin/sh', ['-c', 'umask 0; ulimit -c unlimited; exec "$0"', join(build, 'tests/kestrelbay_on_loopback')], {
    env: { ...process.env, TMPDIR: temporary, QT_LINUX_ACCESSIBILITY_ALWAYS_ON: '1',
      ASAN_OPTIONS: `${process.env.ASAN_OPTIONS}:disable_coredump=0:handle_abort=0` },
    cwd: temporary,
    stdio: ['ignore', 'inherit', 'inherit'],
  });
});

after(() => {
  widget?.kill('SIGKILL');
  server?.closeAllConnections();
  server?.close();
});

test('the token goes where it belongs, and not along a redirect', async () => {
  const desktop = new Desktop();
  await desktop.meet('kestrelbay');
  await until('both questions', () => requests.length >= 2);
  desktop.click((await desktop.called('Statistics')).frame); // an option to be kept
  await until('the options and the log', () => ['state.json', 'widget.log'].every((name) => existsSync(join(data, name))));
  const bearers = requests.filter(({ headers }) => JSON.stringify(headers).includes(TOKEN));
  assert.deepEqual(bearers.map(({ url, headers }) => [url, headers.authorization]),
    [['/api/oauth/usage', `Bearer ${TOKEN}`]]);
  assert.ok(requests.every(({ url }) => url !== '/elsewhere'), JSON.stringify(requests));
});

test('a script gets no secret, and nothing that the widget has open', async () => {
  const told = JSON.parse(await until('the script', () => existsSync(report) && readFileSync(report, 'utf8')));
  assert.ok(!JSON.stringify(told).includes(TOKEN));
  assert.equal(told.mask, 0o077);
  assert.ok(told.environment.HOME, 'the user\'s own settings are handed on');
  const foreign = told.files.filter((file) => file.startsWith('socket:') || file.startsWith(data));
  assert.deepEqual(foreign, []);
});

test('a crash leaves no dump', async () => {
  assert.match(readFileSync(`/proc/${widget.pid}/limits`, 'utf8'), /^Max core file size +1 /m);
  const ended = once(widget, 'exit');
  widget.kill('SIGABRT');
  assert.deepEqual(await ended, [null, 'SIGABRT']);
});

test('what is left can be read by its user alone and does not hold the token', () => {
  const left = everyFile();
  assert.ok(left.includes(join(data, 'state.json')));
  for (const path of left) {
    const about = statSync(path);
    if (!given.has(path)) assert.equal(about.mode & 0o077, 0, path);
    if (about.isFile() && !path.endsWith('.credentials.json'))
      assert.ok(!readFileSync(path).includes(TOKEN), path);
  }
});
