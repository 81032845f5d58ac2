// Writes rollouts as Codex does, beside Claude Code's transcripts, and books what they mean.

import { at, dayOf, HOUR, MINUTE } from './days.mjs';
import { codexModelOn } from './models.mjs';
import { costOf, isAssumed } from './prices.mjs';
import { PROJECTS, PROMPTS, TITLES } from './texts.mjs';

// Since when each response has a record of its own; before there were only totals.
const RECORDS_SINCE = '2026-09-06';

const COUNTS = [
  'input_tokens',
  'cached_input_tokens',
  'cache_write_input_tokens',
  'output_tokens',
  'reasoning_output_tokens',
  'total_tokens',
];
const NOTHING = Object.fromEntries(COUNTS.map((name) => [name, 0]));

class Thread {
  lines = [];
  responses = [];
  total = NOTHING;

  /**
   * `session` is the one that its usage is booked to; `fields` go into the first line. What a thread
   * used whose file `isLost` is booked once others have copied it.
   */
  constructor(home, { session, day, now, fields = {}, isLost = false }) {
    Object.assign(this, { home, session, day, now, isLost, ...codexModelOn(day) });
    this.title = session.title;
    this.hasRecords = day >= RECORDS_SINCE;
    this.id = home.random.uuid();
    const stamp = new Date(now - new Date(now).getTimezoneOffset() * MINUTE).toISOString();
    const name = `rollout-${stamp.slice(0, 19).replaceAll(':', '-')}-${this.id}.jsonl`;
    const old = home.days.indexOf(day) < home.days.length - 100;
    this.path = old
      ? `.codex/archived_sessions/${name}`
      : `.codex/sessions/${day.replaceAll('-', '/')}/${name}`;
    this.say('session_meta', {
      id: this.id,
      timestamp: new Date(now).toISOString(),
      cwd: session.cwd,
      originator: 'codex-tui',
      source: 'cli',
      ...fields,
    });
  }

  say(type, payload) {
    this.write({ timestamp: new Date(this.now).toISOString(), type, payload });
    this.now += 20;
  }

  write(line) {
    this.lines.push(line);
    if (this.isLost) return;
    this.home.files.append(this.path, `${JSON.stringify(line)}\n`, this.now);
  }

  startTurn(text) {
    this.turn = this.home.random.uuid();
    this.say('turn_context', { turn_id: this.turn, cwd: this.session.cwd, model: this.spelledAs });
    const content = [{ type: 'input_text', text }];
    this.say('response_item', { type: 'message', role: 'user', content });
  }

  respond({ cached, long = false }) {
    const { random } = this.home;
    const written = /^gpt-(5\.6|6)/.test(this.model) ? random.whole(0, 3_000) : 0;
    const fresh = long ? 290_000 : random.whole(400, 20_000);
    const output = random.mostlySmall(150, 6_000);
    const counts = [cached + written + fresh, cached, written, output, Math.floor(output / 3)];
    counts.push(counts[0] + output);
    const usage = Object.fromEntries(COUNTS.map((name, index) => [name, counts[index]]));
    this.total = Object.fromEntries(COUNTS.map((name) => [name, this.total[name] + usage[name]]));
    const time = this.now; // of the first line that tells of the response
    if (this.hasRecords) {
      const response = `resp_${random.hex(24)}`;
      const ids = { thread_id: this.id, turn_id: this.turn, response_id: response };
      this.say('token_usage_record', { ...ids, usage });
    }
    this.#sayTotal(usage);
    if (random.chance(0.5)) this.#sayTotal(usage);
    const tokens = { input: fresh, output, write5m: written, write1h: 0, read: cached };
    this.responses.push({
      hasRecord: this.hasRecords,
      time,
      lastTime: this.now,
      model: this.model,
      usage: tokens,
      cost: costOf(this.model, dayOf(time), tokens),
      estimated: isAssumed(this.model, dayOf(time), tokens),
    });
    if (!this.isLost) this.home.ledger.count({ session: this.session, ...this.responses.at(-1) });
    this.now += random.whole(10, 90) * 1000;
  }

  #sayTotal(last) {
    const window = (used, minutes) => ({
      used_percent: used,
      window_minutes: minutes,
      resets_at: Math.floor((this.now + 3 * HOUR) / 1000),
    });
    this.say('event_msg', {
      type: 'token_count',
      info: { total_token_usage: this.total, last_token_usage: last },
      rate_limits: { limit_id: 'codex', primary: window(21, 300), secondary: window(48, 10_080) },
    });
  }

  work(turns) {
    const { random } = this.home;
    let cached = 0;
    for (let turn = 0; turn < turns; turn += 1) {
      this.startTurn(turn === 0 && this.title ? this.title : random.pick(PROMPTS));
      for (let count = random.whole(1, 4); count > 0; count -= 1) {
        this.respond({ cached, long: this.day >= RECORDS_SINCE && random.chance(0.01) });
        cached += random.whole(500, 9_000);
      }
    }
  }

  /** A thread of its own that begins with a copy of this one, stamped anew. */
  fork() {
    const session = { ...this.session, title: this.title, id: this.home.random.uuid() };
    const fork = this.#child(session, { forked_from_id: this.id });
    const timestamp = new Date(fork.now).toISOString();
    for (const line of this.lines) fork.write({ ...line, timestamp });
    return fork;
  }

  /** A sub-agent; its copy keeps the times and leaves the records out. */
  spawn() {
    const spawned = { subagent: { thread_spawn: { parent_thread_id: this.id } } };
    const agent = this.#child(this.session, { source: spawned });
    for (const line of this.lines) if (line.type !== 'token_usage_record') agent.write(line);
    return agent;
  }

  #child(session, fields) {
    const child = new Thread(this.home, { session, day: this.day, now: this.now, fields });
    child.total = this.total;
    this.now += 1000;
    return child;
  }
}

/** Some days, when the work begins on each, and a session for it. */
function* workOf(home, { hour, share }) {
  const { random } = home;
  for (const day of home.days) {
    const now = at(day, hour, random.whole(0, 59));
    const isOver = home.until === undefined || at(day, hour + 10) < home.until;
    if (!isOver || !random.chance(share)) continue;
    const { project, cwd } = random.pick(PROJECTS);
    yield { day, now, session: { id: random.uuid(), title: random.pick(TITLES), project, cwd } };
  }
}

/** A thread whose file was gone before anybody read it; it may have begun in an older version. */
function writeLost(home, plan) {
  const { random } = home;
  const lost = new Thread(home, { ...plan, isLost: true });
  lost.session = { ...plan.session, title: '' };
  const { hasRecords } = lost;
  lost.hasRecords &&= random.chance(0.5);
  lost.work(random.whole(1, 2));
  lost.hasRecords = hasRecords;
  if (random.chance(0.7)) lost.work(1);
  const isSpawned = random.chance(0.4);
  if (isSpawned) lost.spawn().work(random.whole(0, 1));
  const fork = isSpawned && random.chance(0.5) ? undefined : lost.fork();
  fork?.work(random.whole(0, 2));
  // Without any record nobody knows where the fork's copy ends.
  const isKnown = [lost, fork].some((thread) => thread?.responses.some((each) => each.hasRecord));
  const { session } = isSpawned || isKnown ? lost : fork;
  for (const response of lost.responses) home.ledger.count({ session, ...response });
}

export function writeCodex(home) {
  const { random } = home;
  for (const { day, now, session } of workOf(home, { hour: 10, share: 0.4 })) {
    const thread = new Thread(home, { session, day, now });
    thread.work(random.whole(1, 6));
    if (random.chance(0.25)) thread.spawn().work(1);
    // Some forks are looked at and left.
    if (random.chance(0.3)) thread.fork().work(random.whole(0, 2));
    if (random.chance(0.3)) thread.work(2);
  }
  for (const plan of workOf(home, { hour: 12, share: 0.1 })) writeLost(home, plan);
}
