// What a soak has shown: the curve as a file and in the terminal, a table, and what goes too far.

import { writeFileSync } from 'node:fs';

const COLUMNS = 72;
const BARS = '▁▂▃▄▅▆▇█';

const TEN_MINUTES = 600; // seconds
const SLOPE = 1; // MB in ten minutes at rest
const GROWTH = 1.05; // from the first warm rest to the last
const WARM_UP = 1 / 3; // of the rests: everything has been made once, and been as large as it gets
const WAKE_UPS = 0.3; // more in a second; another heartbeat would be 0.5

const noMore = { told: 'no more at last than ever before', holds: (values) => values.at(-1) <= Math.min(...values) };

/** What is compared from rest to rest; of memory, from warm rest to warm rest. */
const RULES = {
  private: {
    told: `after the first third slope up to ${SLOPE} MB in ten minutes, last up to ${GROWTH} x first`,
    holds: (values, slope) => slope <= SLOPE && values.at(-1) <= values[0] * GROWTH,
    isMemory: true,
  },
  fds: noMore,
  threads: noMore,
  children: { told: 'none', holds: (values) => values.every((value) => value === 0) },
  windows: noMore,
  // Qt keeps one for the panel and for each menu that has been open.
  pixmaps: { told: 'four', holds: (values) => values.every((value) => value <= 4) },
  wakeUps: {
    told: `last up to first + ${WAKE_UPS}`,
    holds: (values) => values.at(-1) <= values[0] + WAKE_UPS,
  },
};

/** Of the line that is nearest to all values, in units in ten minutes. */
function slopeOf(times, values) {
  const mean = (list) => list.reduce((sum, one) => sum + one, 0) / list.length;
  const [time, value] = [mean(times), mean(values)];
  const along = times.reduce((sum, at) => sum + (at - time) ** 2, 0);
  return along === 0 ? 0 : times.reduce((sum, at, index) => sum + (at - time) * (values[index] - value), 0) / along * TEN_MINUTES;
}

/** The largest values of each stretch of time, as bars. */
function curve(values) {
  const width = Math.min(COLUMNS, values.length);
  const [low, high] = [Math.min(...values), Math.max(...values)];
  return Array.from({ length: width }, (_, at) => {
    const stretch = values.slice(Math.floor(at * values.length / width), Math.floor((at + 1) * values.length / width));
    return BARS[Math.round((Math.max(...stretch) - low) / (high - low || 1) * (BARS.length - 1))];
  }).join('');
}

const digits = (value) => (Number.isInteger(value) ? String(value) : value.toFixed(2));

export class Verdict {
  #samples = []; // { at, phase, …quantities }; `at` in seconds, `phase` "use" or "rest"

  add(sample) {
    this.#samples.push(sample);
  }

  writeCsv(path) {
    const names = Object.keys(this.#samples.find(({ phase }) => phase === 'rest') ?? this.#samples[0] ?? {});
    const rows = this.#samples.map((sample) => names.map((name) => (typeof sample[name] === 'number' ? digits(sample[name]) : sample[name] ?? '')));
    writeFileSync(path, [names, ...rows].map((row) => `${row.join(',')}\n`).join(''));
  }

  /** Prints all, and returns what went too far; memory is no question where a sanitizer keeps it. */
  tell({ sanitized }) {
    if (this.#samples.length === 0) return ['nothing was seen of it'];
    const rests = this.#samples.filter(({ phase }) => phase === 'rest');
    const names = Object.keys(rests[0] ?? {}).filter((name) => !['at', 'phase', 'cpu'].includes(name));
    for (const name of ['rss', 'private']) {
      console.log(`${name}, from ${digits(Math.min(...this.#samples.map((one) => one[name])))} to ${
        digits(Math.max(...this.#samples.map((one) => one[name])))} MB:\n${curve(this.#samples.map((one) => one[name]))}`);
    }
    const row = (...cells) => console.log(cells.map((cell, at) => (at === 0 ? cell.padEnd(11) : cell.padStart(9))).join(''));
    console.log(`\nAt rest, ${rests.length} times; the slope is in ten minutes, once warm`);
    row('', 'first', 'warm', 'last', 'least', 'most', 'slope');
    const warm = rests.slice(Math.floor(rests.length * WARM_UP));
    const times = warm.map(({ at }) => at);
    return names.flatMap((name) => {
      const values = rests.map((one) => one[name]);
      const last = warm.map((one) => one[name]);
      const slope = slopeOf(times, last);
      row(name, ...[values[0], last[0], values.at(-1), Math.min(...values), Math.max(...values), slope].map(digits));
      const rule = RULES[name];
      if (!rule || (rule.isMemory && sanitized)) return [];
      const holds = rule.isMemory ? rule.holds(last, times.at(-1) - times[0] >= TEN_MINUTES ? slope : 0) : rule.holds(values);
      return holds ? [] : [`${name} at rest: ${rule.told}, but ${values.map(digits).join(' ')}`];
    });
  }
}
