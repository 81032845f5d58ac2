// One response stands on several lines, and only together they tell its usage and its identity.

const TOKENS = { input: 6, output: 900, read: 41_000, write5m: 3_100 };

const withoutRequest = (line) => delete line.requestId;

function withoutIds(line) {
  delete line.requestId;
  delete line.message.id;
}

function zeros(line) {
  line.message.usage = { input_tokens: 0, output_tokens: 0, cache_read_input_tokens: 0 };
}

function growingOutput(talk) {
  talk.respond(TOKENS, { lines: [{ output: 3 }, { output: 310 }, { output: 900 }] });
}

function shrinkingOutput(talk) {
  talk.respond(TOKENS, { lines: [{ output: 900, stop: 'end_turn' }, { output: 5 }] });
}

function zerosFirst(talk) {
  talk.respond(TOKENS, { lines: [{ edit: zeros }, {}] });
}

function requestNamedLate(talk) {
  talk.respond(TOKENS, { lines: [{ output: 2, edit: withoutRequest }, {}] });
}

function requestNamedEarly(talk) {
  talk.respond(TOKENS, { lines: [{ output: 2 }, { edit: withoutRequest }] });
}

function requestNeverNamed(talk) {
  talk.respond(TOKENS, { lines: [{ output: 2, edit: withoutRequest }, { edit: withoutRequest }] });
}

function noIdsAtAll(talk) {
  talk.respond(TOKENS, { lines: [{ edit: withoutIds }] });
  talk.respond(TOKENS, { lines: [{ edit: withoutIds }] });
  talk.copy(talk.lines.slice(-1));
}

/** A proxy that numbers messages anew for each request. */
function twoRequestsOneMessage(talk) {
  const sameMessage = (line) => {
    line.message.id = 'msg_1';
  };
  talk.respond(TOKENS, { lines: [{ edit: sameMessage }] });
  talk.wait(5_000);
  talk.respond({ ...TOKENS, output: 120 }, { lines: [{ edit: sameMessage }] });
}

export const repeats = [
  [20, 'Output grows from line to line', growingOutput],
  [20, 'Output shrinks from line to line', shrinkingOutput],
  [21, 'Zeros come before the real numbers', zerosFirst],
  [22, 'The request is named on the last line only', requestNamedLate],
  [22, 'The request is named on the first line only', requestNamedEarly],
  [23, 'The request is never named', requestNeverNamed],
  [23, 'Neither message nor request is named', noIdsAtAll],
  [24, 'Two requests share the id of a message', twoRequestsOneMessage],
];
