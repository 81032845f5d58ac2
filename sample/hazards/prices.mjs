// Requests that do not cost what their model usually does.

const TOKENS = { input: 7, output: 1_000, read: 60_000, write5m: 2_000, write1h: 1_000 };

const priced = (options) => (talk) => talk.respond(TOKENS, options);
const fast = (model) => priced({ model, speed: 'fast' });

/** One token more makes the whole request dearer. */
function bothSidesOfTheTier(talk) {
  const model = 'claude-haiku-5-5';
  const tokens = { input: 1_000, output: 500, read: 98_000 };
  talk.respond({ ...tokens, write5m: 1_000 }, { model });
  talk.wait(5_000);
  talk.respond({ ...tokens, write1h: 1_001 }, { model });
}

/** Every spelling means the same row of the price table. */
const spelled =
  (model, ...spellings) =>
  (talk) => {
    for (const spelledAs of spellings) {
      talk.wait(5_000);
      talk.respond(TOKENS, { model, spelledAs });
    }
  };

function splitOfWrites(talk) {
  talk.respond({ ...TOKENS, uncovered: 700 });
  talk.wait(5_000);
  const flat = (line) => delete line.message.usage.cache_creation;
  talk.respond(
    { input: 3, output: 80, uncovered: 5_000 },
    { lines: [{ output: 1, edit: flat }, { edit: flat }] },
  );
}

/** Nothing but the numbers, as old versions wrote it. */
function bareUsage(talk) {
  const bare = ({ message }) => {
    for (const key of ['speed', 'iterations', 'server_tool_use', 'service_tier', 'inference_geo']) {
      delete message.usage[key];
    }
  };
  talk.respond(TOKENS, { lines: [{ edit: bare }] });
}

/** By age in days. */
export const prices = [
  [35, 'Cache writes beyond their split', splitOfWrites],
  [36, 'Plain usage of an old version', bareUsage],
  [36, 'Thinking is part of the output', priced({ thinking: 900 })],
  [37, 'Batch costs half', priced({ tier: 'batch' })],
  [37, 'No service tier', priced({ tier: null })],
  [38, 'A tier without a known price', priced({ tier: 'priority' })],
  [39, 'A model nobody knows', priced({ model: 'claude-nimbus-1' })],
  [40, 'A model with a known beginning', priced({ model: 'claude-opus-4-1-preview' })],
];

/** By day, where the year of the home contains it. */
export const datedPrices = [
  ['2026-03-03', 'Fast mode at six times the price', fast('claude-opus-4-6')],
  ['2026-06-20', 'Fast mode of an older model', fast('claude-opus-4-8')],
  ['2026-08-10', 'Fast mode at twice the price', fast('claude-opus-5')],
  ['2026-10-12', 'Fast mode after the next release', fast('claude-opus-5-5')],
  ['2026-11-12', 'Fast mode without a known price', fast('claude-fable-5-2')],
  ['2026-10-14', 'A prompt at the limit of the tier', bothSidesOfTheTier],
  ['2026-10-04', 'Before the price of cache reads fell', priced({ model: 'claude-sonnet-5-5' })],
  ['2026-10-09', 'After the price of cache reads fell', priced({ model: 'claude-sonnet-5-5' })],
  ['2026-07-20', 'A model before its own price list', priced({ model: 'claude-opus-5' })],
  [
    '2026-05-02',
    'Dated ids',
    spelled('claude-haiku-4-5', 'claude-haiku-4-5-20251001', 'claude-haiku-4-5'),
  ],
  [
    '2026-08-20',
    'Long context and a provider in the id',
    spelled(
      'claude-opus-5',
      'claude-opus-5[1m]',
      'anthropic/claude-opus-5',
      'anthropic/claude-opus-5-20260724[1m]',
    ),
  ],
];
