// `./dev run` where there is no display, with the build for tests.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { homedir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';

import { checkout, run } from '../companions/scratch.mjs';

const COMPACT = 262; // pixels, with what is around it in the picture less than that of the wide panel
const WIDE = 342;

test('a picture shows the panel with its history, and the report is printed', () => {
  const made = run(process.execPath, [join(checkout, 'sample/make-home.mjs'), homedir(), '--small']);
  assert.equal(made.status, 0, made.stderr);
  const picture = join(homedir(), 'panel.png');
  const { DISPLAY, WAYLAND_DISPLAY, ...env } = process.env;
  const ran = run(join(checkout, 'tools/run'), [], { env: { ...env, KESTRELBAY_PICTURE: picture } });
  assert.equal(ran.status, 0, ran.stderr);
  assert.match(ran.stdout, /Total/);
  const [width, height] = execFileSync('identify', ['-format', '%w %h', picture], { encoding: 'utf8' }).split(' ').map(Number);
  assert.ok(width > WIDE && height > COMPACT, `${width} x ${height}`);
});
