// The programs around the widget: they write its files, and answer what it asks over the network.

import { appendFileSync, copyFileSync, mkdirSync, readdirSync, readFileSync, renameSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:https';
import { homedir } from 'node:os';
import { join } from 'node:path';

import { Random } from '../sample/random.mjs';
import { checkout } from '../tests/companions/scratch.mjs';
import { Figures } from './Figures.mjs';

const TEN_YEARS = 3653; // days

const claude = join(homedir(), '.claude');
const data = join(homedir(), '.kestrelbay');
const statistics = join(data, 'stats.json');
const sync = join(data, 'usage-sync.mjs');

/** Replaces a file in one step, as whoever writes it does. */
function replace(path, content) {
  writeFileSync(`${path}.new`, typeof content === 'string' ? content : JSON.stringify(content));
  renameSync(`${path}.new`, path);
}

/** A line of a transcript as the only element, none of one that is torn. */
function parsed(line) {
  try {
    return [JSON.parse(line)];
  } catch {
    return [];
  }
}

export class Surroundings {
  /** How often each host was asked. */
  asked = { account: 0, site: 0 };
  #random;
  #network;
  #figures;
  #server;
  #transcripts;

  constructor(seed) {
    this.#random = new Random(seed);
    this.#network = new Random(seed + 1); // of its own, because nobody knows when it is asked
    this.#figures = new Figures(this.#random);
    const projects = join(claude, 'projects');
    this.#transcripts = readdirSync(projects, { recursive: true, encoding: 'utf8' })
      .filter((name) => /^[^/]+\/[^/]+\.jsonl$/.test(name)).map((name) => join(projects, name));
  }

  /** Serves both hosts that the build asks, with whatever servers answer. */
  async serve({ port }, certificate) {
    const figures = new Figures(this.#network);
    const answers = {
      account: () => JSON.stringify(figures.usage()),
      site: () => JSON.stringify({ version: this.#network.pick(['0.0.1', '999.0', 'soon']) }),
    };
    this.#server = createServer({ key: readFileSync(`${certificate}.key`), cert: readFileSync(`${certificate}.pem`) }, (request, response) => {
      const host = request.url.startsWith('/api/oauth/usage') ? 'account' : 'site';
      ++this.asked[host];
      response.statusCode = this.#network.pick([200, 200, 200, 200, 200, 200, 404, 429, 500]);
      response.end(this.#network.chance(0.9) ? answers[host]() : '{"five_hour":');
    });
    await new Promise((ready) => this.#server.listen(Number(port), 'localhost', ready));
    replace(join(claude, '.credentials.json'), { claudeAiOauth: { accessToken: 'not-a-secret' } });
  }

  close() {
    this.#server.closeAllConnections();
    this.#server.close();
  }

  #statistics() {
    const large = () => replace(statistics, this.#figures.statistics(TEN_YEARS, 5000));
    const usual = (days) => replace(statistics, this.#figures.statistics(days, this.#random.whole(0, 60)));
    const kinds = {
      month: () => usual(30),
      year: () => usual(365),
      large,
      broken: () => replace(statistics, '{"days":[{"date":'),
      foreign: () => replace(statistics, { days: 'none' }),
      none: () => rmSync(statistics, { force: true }),
    };
    kinds[this.#random.oneOf({ month: 60, year: 25, large: 5, broken: 4, foreign: 2, none: 4 })]();
  }

  /** A transcript gets more lines like its own. */
  #work() {
    const path = this.#random.pick(this.#transcripts);
    const said = readFileSync(path, 'utf8').split('\n').filter((line) => line.includes('"requestId"')).flatMap(parsed);
    if (said.length === 0) return;
    const answer = this.#random.pick(said);
    answer.uuid = this.#random.uuid();
    answer.requestId = `req_${this.#random.letters(22)}`;
    answer.message.id = `msg_${this.#random.letters(22)}`;
    answer.timestamp = new Date().toISOString();
    appendFileSync(path, `${JSON.stringify(answer)}\n`);
  }

  #broken(content) {
    return this.#random.chance(0.05) ? '{"updatedAt":' : content;
  }

  /** A second of what goes on there. */
  goOn() {
    this.#statistics();
    const now = (chance) => this.#random.chance(chance);
    if (now(0.5)) this.#work();
    if (now(0.4)) replace(join(claude, 'usage-limits.json'), this.#broken(this.#figures.limits()));
    if (now(0.4)) replace(join(data, 'codex-limits.json'), this.#broken(this.#figures.codexLimits()));
    if (now(0.3)) replace(join(data, 'sync-status.json'), this.#broken(this.#figures.syncStatus()));
    if (now(0.05)) rmSync(join(data, 'codex-limits.json'), { force: true });
    // The stand-in indexes nothing, so there are runs of the indexer as well.
    if (now(0.1)) copyFileSync(join(checkout, 'tests/widget/scripts/usage-sync-standin.mjs'), sync);
    if (now(0.1)) rmSync(sync, { force: true });
  }

  /** Little and ordinary, always the same. */
  calmDown() {
    mkdirSync(data, { recursive: true });
    rmSync(sync, { force: true });
    const window = (percent) => ({ percent, resetsAt: new Date(Date.now() + 3_600_000).toISOString() });
    const updatedAt = new Date().toISOString();
    replace(join(claude, 'usage-limits.json'), { updatedAt, fiveHour: window(37), sevenDay: window(64) });
    replace(join(data, 'codex-limits.json'), { updatedAt, primary: { ...window(5), minutes: 300 } });
    replace(statistics, this.#figures.statistics(30, 12));
  }
}
