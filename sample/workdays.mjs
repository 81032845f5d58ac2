// The ordinary year of a developer: busy weekdays, quiet weekends, two holidays.

import { Conversation } from './conversation.mjs';
import { at, dayOf, HOUR, MINUTE, shiftDay, weekday } from './days.mjs';
import { modelOn } from './models.mjs';
import {
  EMOJI_TITLE,
  LONG_TITLE,
  PROJECTS,
  PROMPTS,
  RIGHT_TO_LEFT_TITLE,
  TITLES,
  TOOL_RESULTS,
} from './texts.mjs';

const SECOND = 1000;
const LONGEST_STEP = 6 * MINUTE;

// Tokens at which a conversation is summed up and goes on with the summary alone.
const FULL_CONTEXT = 185_000;

// How many days before the last one: [first, last] of a holiday.
const HOLIDAYS = [
  [121, 131],
  [318, 330],
];

// Days before the last one on which a title puts the session list to the test.
const SPECIAL_TITLES = new Map([
  [0, EMOJI_TITLE],
  [1, LONG_TITLE],
  [2, RIGHT_TO_LEFT_TITLE],
]);

export function writeWorkdays(home) {
  for (const [age, day] of [...home.days].reverse().entries()) writeDay(home, day, age);
}

function sessionCount(home, day, age) {
  const { random } = home;
  if (age < 2) return random.whole(3, 4);
  if (SPECIAL_TITLES.has(age)) return 2;
  if (HOLIDAYS.some(([first, last]) => age >= first && age <= last)) return 0;
  const weekend = weekday(day) % 6 === 0;
  return random.weighted(weekend ? [7, 2, 1] : [1, 4, 6, 5, 2]);
}

/** When sessions of a day may run; the day that is not over yet offers what has passed of it. */
function workingHours(home, day) {
  const morning = at(day, 8, 30);
  const evening = at(day, 22, 30);
  if (home.until === undefined || dayOf(home.until) !== day) return [morning, evening];
  const first = at(day, 0);
  const last = Math.max(home.until - SECOND, first + SECOND);
  return last - morning > 2 * HOUR ? [morning, Math.min(evening, last)] : [first, last];
}

function writeDay(home, day, age) {
  const { random } = home;
  const [from, to] = workingHours(home, day);
  const count = sessionCount(home, day, age);
  const slot = (to - from) / Math.max(1, count);
  for (let index = 0; index < count; index += 1) {
    // People get used to it: a year ago the conversations were shorter.
    const turns = random.whole(5, 12 - Math.floor(Math.min(age, 360) / 72));
    const room = slot - 1;
    const pace = Math.min(1, room / (turns * LONGEST_STEP));
    const slack = Math.max(0, room - turns * LONGEST_STEP * pace);
    const start = Math.round(from + index * slot + random.next() * slack);
    writeSession(home, { day, start, turns, pace, title: index === 0 && SPECIAL_TITLES.get(age) });
  }
}

function openSession(home, { day, start, pace, title }) {
  const { random } = home;
  const { project, cwd } = PROJECTS[random.weighted(PROJECTS.map(({ share }) => share))];
  const size = random.oneOf({ large: 9, medium: 5, top: 2, small: 1 });
  const session = {
    id: random.uuid(),
    title: title || random.pick(TITLES),
    project,
    cwd,
    model: modelOn(day, size),
  };
  const conversation = new Conversation(home, session, { now: start });
  conversation.pace = pace;
  return conversation;
}

function writeSession(home, plan) {
  const conversation = openSession(home, plan);
  const { random } = home;
  const { session } = conversation;

  const source = random.oneOf({ assistant: 16, prompt: 3, user: 1 });
  conversation.prompt(source === 'prompt' ? session.title : random.pick(PROMPTS));
  let context = random.whole(24_000, 60_000);
  let cached = 0;
  const oneHour = random.chance(0.3);
  for (let turn = 0; turn < plan.turns; turn += 1) {
    conversation.wait(random.whole(3, 45) * SECOND);
    conversation.respond(tokensOf(random, { context, cached, oneHour }), {
      thinking: random.chance(0.3) && random.whole(50, 400),
    });
    cached = context;
    context += random.whole(3_000, 30_000);
    continueTurn(conversation, turn, plan);
    if (context > FULL_CONTEXT) {
      context = compact(conversation, context);
      cached = 0;
    }
  }
  writeTitle(conversation, source);
}

/** A title by the user stands above the assistant's; without either the first prompt is one. */
function writeTitle(conversation, source) {
  const { id: sessionId, title } = conversation.session;
  if (source === 'prompt') return;
  const aiTitle = source === 'user' ? 'Continue the work' : title;
  conversation.write({ type: 'ai-title', aiTitle, sessionId });
  if (source === 'user')
    conversation.write({ type: 'custom-title', customTitle: title, sessionId });
}

function tokensOf(random, { context, cached, oneHour }) {
  const written = context - cached;
  return {
    input: random.whole(2, 14),
    output: random.mostlySmall(150, 9_000),
    read: cached,
    [oneHour ? 'write1h' : 'write5m']: written,
  };
}

function continueTurn(conversation, turn, plan) {
  const { random } = conversation.home;
  if (random.chance(0.6)) {
    conversation.toolResult(random.pick(TOOL_RESULTS));
  } else {
    conversation.wait(random.whole(10, 200) * SECOND);
    conversation.prompt(random.pick(PROMPTS));
  }
  if (turn === 2 && random.chance(0.15)) runAgent(conversation, plan.day);
}

/** Returns the tokens that are left. */
function compact(conversation, preTokens) {
  const postTokens = 21_000;
  conversation.say('system', {
    subtype: 'compact_boundary',
    compactMetadata: { trigger: 'auto', preTokens, postTokens },
  });
  conversation.prompt('This session is being continued from a previous conversation.', {
    isCompactSummary: true,
  });
  return postTokens;
}

/** A sub-agent works beside the main conversation, which goes on after it. */
function runAgent(conversation, day) {
  const { random } = conversation.home;
  const agent = conversation.agent();
  const model = modelOn(day, 'small');
  agent.prompt('Search the code base for callers of the old function.');
  for (let turn = random.whole(2, 5); turn > 0; turn -= 1) {
    agent.wait(random.whole(2, 8) * SECOND);
    agent.respond(
      { input: 4, output: random.whole(60, 700), read: 9_000, write5m: 2_500 },
      { model },
    );
  }
}
