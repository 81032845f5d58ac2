// Which models people used when.

// Each from a day or more after its price is known to apply: nobody tells the hour of a change.
const ERAS = [
  ['large', '', 'claude-opus-4-1'],
  ['large', '2025-11-26', 'claude-opus-4-5'],
  ['large', '2026-02-06', 'claude-opus-4-6'],
  ['large', '2026-04-18', 'claude-opus-4-7'],
  ['large', '2026-06-03', 'claude-opus-4-8'],
  ['large', '2026-07-26', 'claude-opus-5'],
  ['large', '2026-09-24', 'claude-opus-5-5'],
  ['medium', '', 'claude-sonnet-4-5'],
  ['medium', '2026-02-19', 'claude-sonnet-4-6'],
  ['medium', '2026-06-30', 'claude-sonnet-5'],
  ['medium', '2026-09-30', 'claude-sonnet-5-5'],
  // Its price for cache reads falls on the 7th.
  ['medium', '2026-10-06', 'claude-sonnet-5'],
  ['medium', '2026-10-09', 'claude-sonnet-5-5'],
  ['small', '', 'claude-haiku-4-5'],
  ['small', '2026-10-09', 'claude-haiku-5-5'],
  ['top', '', 'claude-opus-4-1'],
  ['top', '2025-11-26', 'claude-opus-4-5'],
  ['top', '2026-06-11', 'claude-fable-5'],
  ['top', '2026-09-03', 'claude-fable-5-1'],
  ['top', '2026-11-11', 'claude-fable-5-2'],
];

const CODEX_ERAS = [
  ['', 'gpt-5.2-codex'],
  ['2026-04-25', 'gpt-5.5'],
  ['2026-07-10', 'gpt-5.6-terra'],
  ['2026-07-20', 'gpt-5.6-luna'],
  ['2026-08-01', 'gpt-5.6-terra'],
  ['2026-08-10', 'gpt-5.6-codex'],
  ['2026-08-23', 'gpt-5.6-sol', 'gpt-5.6'],
  ['2026-09-05', 'gpt-6-astra', 'gpt-6-astra-2026-09-03'],
  ['2026-09-24', 'gpt-6-sol'],
  ['2026-10-01', 'gpt-6.1-sol'],
  ['2026-11-19', 'gpt-6.2-sol'],
  ['2026-11-21', 'gpt-6.2-astra'],
];

/** The model, and how transcripts write its id. */
export function codexModelOn(day) {
  const [, model, spelledAs = model] = CODEX_ERAS.filter(([from]) => from <= day).at(-1);
  return { model, spelledAs };
}

/** `size` is small, medium, large or top. */
export function modelOn(day, size) {
  return ERAS.filter(([of, from]) => of === size && from <= day).at(-1)[2];
}
