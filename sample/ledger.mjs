// The books of a sample home: what its transcripts mean, kept while they are written.

import { dayOf } from './days.mjs';
import { dollars } from './prices.mjs';

const plus = (sum, cost) => (cost === null ? sum : (sum ?? 0n) + cost);

class Sum {
  tokens = { input: 0, output: 0, cacheWrite: 0, cacheRead: 0 };
  cost = null;

  add(usage, cost) {
    this.tokens.input += usage.input;
    this.tokens.output += usage.output;
    this.tokens.cacheWrite += usage.write5m + usage.write1h;
    this.tokens.cacheRead += usage.read;
    this.cost = plus(this.cost, cost);
  }
}

export class Ledger {
  #days = new Map();
  #sessions = new Map();

  /** Counts one response; `cost` is in pico-dollars, null where no price is known. */
  count({ session, time, lastTime, model, usage, cost, estimated }) {
    this.#countDay(dayOf(time), { model, usage, cost, estimated });
    this.#countSession(session, { time, lastTime, usage, cost });
  }

  #countDay(date, { model, usage, cost, estimated }) {
    if (!this.#days.has(date)) {
      this.#days.set(date, { sum: new Sum(), estimated: false, models: new Map() });
    }
    const day = this.#days.get(date);
    day.sum.add(usage, cost);
    day.estimated ||= estimated || cost === null;
    day.models.set(model, plus(day.models.get(model) ?? null, cost));
  }

  #countSession(session, { time, lastTime, usage, cost }) {
    if (!this.#sessions.has(session.id)) {
      this.#sessions.set(session.id, { session, sum: new Sum(), start: time, end: lastTime });
    }
    const entry = this.#sessions.get(session.id);
    entry.sum.add(usage, cost);
    entry.start = Math.min(entry.start, time);
    entry.end = Math.max(entry.end, lastTime);
  }

  get days() {
    return [...this.#days]
      .sort(([first], [second]) => (first < second ? -1 : 1))
      .map(([date, day]) => ({
        date,
        ...day.sum.tokens,
        cost: dollars(day.sum.cost),
        ...(day.estimated && { estimated: true }),
        models: Object.fromEntries([...day.models].sort().map(([id, cost]) => [id, dollars(cost)])),
      }));
  }

  /** Newest first. */
  get sessions() {
    return [...this.#sessions.values()]
      .sort((first, second) => second.end - first.end)
      .map(({ session, sum, start, end }) => ({
        sessionId: session.id,
        title: session.title,
        project: session.project,
        start: new Date(start).toISOString(),
        end: new Date(end).toISOString(),
        tokens: sum.tokens,
        cost: dollars(sum.cost),
      }));
  }
}
