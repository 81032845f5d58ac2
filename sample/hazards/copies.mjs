// The same lines stand in several files, and several sessions in one.

import { Conversation } from '../conversation.mjs';
import { HOUR } from '../days.mjs';

const TOKENS = { input: 8, output: 640, read: 52_000, write5m: 2_200, write1h: 400 };

/** Another session on the same project, an hour later. */
function laterSession(talk, title, options) {
  const session = { ...talk.session, id: talk.home.random.uuid(), title };
  return new Conversation(talk.home, session, { now: talk.now + HOUR, ...options });
}

function forkOf(talk, title) {
  const fork = laterSession(talk, title);
  for (const line of talk.lines) {
    const forkedFrom = { sessionId: talk.session.id, messageUuid: line.uuid };
    fork.copy([line], { sessionId: fork.session.id, forkedFrom });
  }
  return fork;
}

function goOn(talk, tokens = TOKENS) {
  talk.wait(20_000);
  talk.prompt('Go on from here.');
  talk.wait(9_000);
  talk.respond(tokens);
  talk.write({ type: 'ai-title', aiTitle: talk.session.title, sessionId: talk.session.id });
}

function forked(talk) {
  talk.respond(TOKENS);
  goOn(talk);
  const fork = forkOf(talk, 'A fork with the history of its origin');
  goOn(fork);
  goOn(forkOf(fork, 'A fork of a fork'));
}

/** The original was cut off; its fork holds the final line of the response. */
function forkKnowsMore(talk) {
  const uncut = { output: 2_100 };
  talk.respond({ ...TOKENS, ...uncut }, { lines: [{ output: 4, stop: null }] });
  const fork = forkOf(talk, 'A fork that knows the final output');
  const [last] = fork.lines.slice(-1);
  const usage = { ...last.message.usage, output_tokens: uncut.output };
  fork.copy([last], { message: { ...last.message, stop_reason: 'end_turn', usage } });
  goOn(fork);
}

/** Cleaned up: only the fork is left of the history. */
function originGone(talk) {
  talk.fields.forkedFrom = {
    sessionId: talk.home.random.uuid(),
    messageUuid: talk.home.random.uuid(),
  };
  talk.respond(TOKENS);
}

function resumedAsItWas(talk) {
  talk.respond(TOKENS);
  talk.respond(TOKENS, {
    lines: [
      {
        edit: (line) => {
          delete line.requestId;
          delete line.message.id;
        },
      },
    ],
  });
  const resumed = laterSession(talk, 'Resumed in a new file, history as it was');
  resumed.copy(talk.lines);
  goOn(resumed);
}

/** The copy carries the new session's name and the next day's time: the original owns the usage. */
function resumedUnderNewName(talk) {
  talk.respond(TOKENS);
  const resumed = laterSession(talk, 'Resumed in a new file, history renamed');
  resumed.now += 24 * HOUR;
  resumed.copy(talk.lines, {
    sessionId: resumed.session.id,
    timestamp: new Date(resumed.now).toISOString(),
  });
  goOn(resumed);
}

/** Two terminals write into one file. */
function interleaved(talk) {
  const other = laterSession(talk, 'The second of two sessions in one file', { path: talk.path });
  other.now = talk.now + 3_000;
  other.prompt('Meanwhile, look at the other module.');
  for (let turn = 0; turn < 3; turn += 1) {
    goOn(talk, { ...TOKENS, output: 300 + turn });
    other.now = talk.now + 1_000;
    goOn(other, { ...TOKENS, output: 700 + turn });
    talk.now = other.now;
  }
}

export const copies = [
  [25, 'Forked twice', forked],
  [26, 'Cut off in the middle of a response', forkKnowsMore],
  [27, 'A fork whose origin is gone', originGone],
  [28, 'Resumed later with its history', resumedAsItWas],
  [29, 'Resumed the next day under a new name', resumedUnderNewName],
  [30, 'The first of two sessions in one file', interleaved],
];
