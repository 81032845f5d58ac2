// Days begin at local midnight, whatever the clocks and the time stamps' zone say.

import { at, HOUR, MINUTE, shiftDay } from '../days.mjs';

const TOKENS = { input: 4, output: 350, read: 22_000, write5m: 1_100 };

const after = (talk) => shiftDay(talk.day, 1);

function aroundMidnight(talk) {
  const midnight = at(after(talk), 0);
  for (const offset of [-HOUR, -1_000, -1, 0, 1, 1_000, HOUR]) {
    talk.now = midnight + offset;
    talk.respond(TOKENS, { lines: [{}] });
  }
}

/** The first of its lines dates a response. */
function acrossMidnight(talk) {
  talk.now = at(after(talk), 0) - 400;
  talk.respond(TOKENS, { lines: [{ output: 2 }, { output: 20 }, {}] });
}

/** 23 or 25 hours long. */
export function clockChange(talk) {
  const end = at(after(talk), 0);
  for (talk.now = at(talk.day, 0); talk.now < end; talk.now += 35 * MINUTE) {
    talk.respond(TOKENS, { lines: [{}] });
  }
  talk.now = end - 1;
  talk.respond(TOKENS, { lines: [{}] });
}

export const clock = [
  [41, 'Late at night', aroundMidnight],
  [43, 'A response that takes until the next day', acrossMidnight],
];
