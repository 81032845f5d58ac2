// What a response costs, worked out in whole pico-dollars so that sums are exact.
//
// Written by hand and apart from the indexer's own table: the two check each other.

// [models, valid from, input, output, 5-minute write, 1-hour write, read] in dollars per million
// tokens. The last row of a model that is already valid applies.
const RATES = [
  [['claude-fable-5-2'], '2026-11-09', 8, 40, 10, 16, 0.2],
  [['claude-fable-5-1', 'claude-mythos-5-1'], '2026-09-01', 10, 50, 12.5, 20, 0.25],
  [['claude-fable-5', 'claude-mythos-5'], '2026-06-09', 10, 50, 12.5, 20, 1],
  [['claude-opus-5-5'], '2026-09-22', 4, 20, 5, 8, 0.2],
  [['claude-opus-5'], '2026-07-24', 5, 25, 6.25, 10, 0.5],
  [['claude-opus-4-8', 'claude-opus-4-7'], '', 5, 25, 6.25, 10, 0.5],
  [['claude-opus-4-6', 'claude-opus-4-5'], '', 5, 25, 6.25, 10, 0.5],
  [['claude-opus-4-1', 'claude-opus-4'], '', 15, 75, 18.75, 30, 1.5],
  [['claude-sonnet-5-5'], '2026-09-28', 2, 10, 2.5, 4, 0.2],
  [['claude-sonnet-5-5'], '2026-10-07', 2, 10, 2.5, 4, 0.1],
  [['claude-sonnet-5'], '', 2, 10, 2.5, 4, 0.2],
  [['claude-sonnet-4-6', 'claude-sonnet-4-5', 'claude-sonnet-4'], '', 3, 15, 3.75, 6, 0.3],
  [['claude-haiku-5-5'], '2026-10-07', 0.1, 0.5, 0.125, 0.2, 0.01],
  [['claude-haiku-4-5'], '', 1, 5, 1.25, 2, 0.1],
  [['claude-haiku-3-5'], '', 0.8, 4, 1, 1.6, 0.08],
  // Codex writes its cache for one time only, and for nothing before GPT-5.6.
  [['gpt-5.2-codex'], '', 1.75, 14, 0, 0, 0.175],
  [['gpt-5.5'], '2026-04-23', 5, 30, 0, 0, 0.5],
  [['gpt-5.6-terra'], '', 2.5, 15, 3.125, 0, 0.25],
  [['gpt-5.6-terra'], '2026-07-30', 2, 12, 2.5, 0, 0.2],
  [['gpt-5.6-luna'], '', 1, 6, 1.25, 0, 0.1],
  [['gpt-5.6-luna'], '2026-07-30', 0.2, 1.2, 0.25, 0, 0.02],
  [['gpt-5.6-sol', 'gpt-5.6-codex'], '', 5, 30, 6.25, 0, 0.5],
  [['gpt-5.6-sol', 'gpt-5.6-codex'], '2026-08-21', 4, 20, 5, 0, 0.4],
  [['gpt-6-astra'], '2026-09-03', 10, 50, 12.5, 0, 1],
  [['gpt-6-sol'], '2026-09-22', 2, 10, 2.5, 0, 0.2],
  [['gpt-6.1-sol'], '2026-09-29', 2, 10, 2.5, 0, 0.1],
  [['gpt-6.2-sol'], '2026-11-17', 2, 10, 2.5, 0, 0.1],
  [['gpt-6.2-astra'], '2026-11-17', 8, 40, 10, 0, 0.4],
];

// Above so many prompt tokens the whole request costs other rates.
const LONG_RATES = {
  'claude-haiku-5-5': [100_000, 0.5, 2.5, 0.625, 1, 0.05],
  'gpt-6-astra': [272_000, 20, 75, 25, 0, 2],
  'gpt-6.2-astra': [272_000, 16, 60, 20, 0, 0.8],
  'gpt-6-sol': [272_000, 4, 15, 5, 0, 0.4],
  'gpt-6.1-sol': [272_000, 4, 15, 5, 0, 0.2],
  'gpt-6.2-sol': [272_000, 4, 15, 5, 0, 0.2],
  'gpt-5.5': [272_000, 10, 45, 0, 0, 1],
};

const FAST = {
  'claude-opus-5-5': 2n,
  'claude-opus-5': 2n,
  'claude-opus-4-8': 2n,
  'claude-opus-4-6': 6n,
};

// One dollar per million tokens is a million pico-dollars per token.
const PICO = 1_000_000;

function ratesOn(model, day, prompt) {
  const row = RATES.filter(([models, from]) => models.includes(model) && from <= day).at(-1);
  if (row === undefined) return undefined;
  const [most, ...long] = LONG_RATES[model] ?? [Infinity];
  return prompt > most ? long : row.slice(2);
}

/**
 * Pico-dollars (a BigInt), or null where no price is known.
 * `usage` has input, output, write5m, write1h and read; `mode` may have speed and tier.
 */
export function costOf(model, day, usage, mode = {}) {
  const prompt = usage.input + usage.write5m + usage.write1h + usage.read;
  const rates = ratesOn(model, day, prompt);
  if (rates === undefined) return null;

  const buckets = [usage.input, usage.output, usage.write5m, usage.write1h, usage.read];
  let cost = buckets.reduce(
    (sum, tokens, index) => sum + BigInt(tokens) * BigInt(Math.round(rates[index] * PICO)),
    0n,
  );

  if (mode.speed === 'fast') {
    if (!(model in FAST)) return null;
    cost *= FAST[model];
  }
  if (mode.tier === 'batch') return cost / 2n;
  return (mode.tier ?? 'standard') === 'standard' ? cost : null;
}

/** Whether somebody had to guess a rate that this needs. */
export function isAssumed(model, day, usage) {
  const isOver = model === 'gpt-5.6-sol' && day >= '2026-11-22';
  return isOver || model === 'gpt-5.6-codex' || (model === 'gpt-6.2-astra' && usage.read > 0);
}

export function dollars(picoDollars) {
  return picoDollars === null ? null : Number(picoDollars) / 1e12;
}
