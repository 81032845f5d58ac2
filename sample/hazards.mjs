// Everything that makes counting hard, each in a session of its own that says so in its title.

import { Conversation } from './conversation.mjs';
import { at, changesClocks } from './days.mjs';
import { agents } from './hazards/agents.mjs';
import { clock, clockChange } from './hazards/clock.mjs';
import { copies } from './hazards/copies.mjs';
import { datedPrices, prices } from './hazards/prices.mjs';
import { repeats } from './hazards/repeats.mjs';
import { rubbish } from './hazards/rubbish.mjs';
import { titles } from './hazards/titles.mjs';
import { modelOn } from './models.mjs';

const AGED = [...repeats, ...copies, ...agents, ...prices, ...clock, ...rubbish, ...titles];

// Some of them run into the following day, which has to be over as well.
const YOUNGEST = 3;

export function writeHazards(home) {
  const past = home.days.slice(0, -YOUNGEST);
  for (const [age, title, write] of AGED) {
    if (age < home.days.length) play(home, { day: home.days.at(-1 - age), title, write });
  }
  for (const [day, title, write] of datedPrices) {
    if (past.includes(day)) play(home, { day, title, write });
  }
  for (const day of past.filter(changesClocks)) {
    play(home, { day, title: 'On the day the clocks change', write: clockChange });
  }
}

function play(home, { day, title, write }) {
  const session = {
    id: home.random.uuid(),
    title,
    project: 'edge-cases',
    cwd: '/home/robin/code/edge-cases',
    model: modelOn(day, 'large'),
  };
  const conversation = new Conversation(home, session, {
    now: at(day, 12, home.random.whole(0, 59)),
  });
  conversation.day = day;
  if (!titles.some(([, own]) => own === title)) {
    conversation.write({ type: 'ai-title', aiTitle: title, sessionId: session.id });
  }
  write(conversation);
}
