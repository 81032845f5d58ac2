// Sub-agents write files of their own, and not everything beside a transcript is one.

import { Conversation } from '../conversation.mjs';

const TOKENS = { input: 5, output: 480, read: 18_000, write5m: 1_700 };

function subAgents(talk) {
  talk.respond(TOKENS);
  for (let count = 0; count < 3; count += 1) {
    const agent = talk.agent();
    agent.prompt('Look for callers of the old function.');
    agent.respond(TOKENS);
    agent.wait(4_000);
    agent.respond({ ...TOKENS, output: 950 }, { lines: [{ output: 2 }, { output: 950 }] });
    talk.now = agent.now;
  }
}

/** Its output may be far too low; nobody can tell. */
function neverFinished(talk) {
  talk.respond(TOKENS);
  const agent = talk.agent();
  agent.respond({ ...TOKENS, output: 3 }, { lines: [{ output: 3, stop: null }], estimated: true });
}

/** Old versions had no files for sub-agents. */
function insideTheTranscript(talk) {
  talk.respond(TOKENS);
  const aside = (line) => {
    line.isSidechain = true;
  };
  talk.respond({ ...TOKENS, output: 75 }, { lines: [{ output: 1, edit: aside }, { edit: aside }] });
}

function workflow(talk) {
  talk.respond(TOKENS);
  for (const phase of ['plan', 'build']) {
    const agent = talk.agent(`subagents/workflows/wf-${talk.home.random.hex(8)}/${phase}`);
    agent.prompt('Do your part of the plan.');
    agent.respond(TOKENS);
  }
}

function besideTheTranscript(talk) {
  talk.respond(TOKENS);
  const { files } = talk.home;
  const own = `${talk.folder}/${talk.session.id}`;
  const misleading = [
    `${own}/subagents/journal.jsonl`,
    `${talk.folder}/${talk.home.random.uuid()}.orphaned.jsonl`,
    `${talk.folder}/${talk.home.random.uuid()}.superseded.jsonl`,
    `${own}/subagents/agent-${talk.home.random.hex(17)}.orphaned.jsonl`,
    `${own}/tool-results/b1.txt`,
  ];
  for (const path of misleading) {
    const copy = new Conversation(talk.home, talk.session, { now: talk.now, path });
    copy.write({ type: 'started', agentId: 'a1' });
    copy.respond({ ...TOKENS, output: 99_999 }, { counts: false });
  }
  files.append(
    `${own}/subagents/agent-${talk.home.random.hex(17)}.meta.json`,
    '{"agentType":"explore","description":"Find callers","toolUseId":"toolu_1"}\n',
    talk.now,
  );
  files.append(`${own}/workflows/wf_1.json`, '{"status":"done"}\n', talk.now);
  files.append(`${talk.folder}/memory/notes.md`, 'Tests need a database.\n', talk.now);
  files.append('.claude/sessions/4711.json', '{"pid":4711,"cwd":"/home/robin"}\n', talk.now);
  files.append(
    '.claude/history.jsonl',
    `${JSON.stringify({ display: 'Go on.', timestamp: talk.now, project: talk.session.cwd })}\n`,
    talk.now,
  );
}

export const agents = [
  [31, 'Three sub-agents at work', subAgents],
  [32, 'A sub-agent that was never finished', neverFinished],
  [32, 'A sub-agent inside the transcript', insideTheTranscript],
  [33, 'A workflow with agents of its own', workflow],
  [34, 'Files that look like transcripts', besideTheTranscript],
];
