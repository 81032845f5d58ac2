// Writes the lines of one session as Claude Code does, and books what they mean.

import { dayOf } from './days.mjs';
import { costOf } from './prices.mjs';

const NO_TOKENS = { input: 0, output: 0, read: 0, write5m: 0, write1h: 0, uncovered: 0 };

/** The folder of a project's transcripts below `.claude/projects`. */
export function slugOf(cwd) {
  return cwd.replace(/[^A-Za-z0-9]/g, '-');
}

function usageFields(tokens, output, { speed, tier, thinking, iterations }) {
  const fresh = { input_tokens: tokens.input, output_tokens: output };
  return {
    ...fresh,
    ...(thinking && { output_tokens_details: { thinking_tokens: Math.min(thinking, output) } }),
    cache_read_input_tokens: tokens.read,
    cache_creation_input_tokens: tokens.write5m + tokens.write1h + tokens.uncovered,
    cache_creation: {
      ephemeral_5m_input_tokens: tokens.write5m,
      ephemeral_1h_input_tokens: tokens.write1h,
    },
    server_tool_use: { web_search_requests: 0, web_fetch_requests: 0 },
    service_tier: tier === undefined ? 'standard' : tier,
    inference_geo: 'not_available',
    speed: speed ?? 'standard',
    ...(iterations && {
      iterations: [{ type: 'message', ...fresh, cache_read_input_tokens: tokens.read }],
    }),
  };
}

/** One voice of a session: the main conversation, or a sub-agent with a file of its own. */
export class Conversation {
  /** What was said so far, for the copies that forks and resumed sessions make. */
  lines = [];
  newline = '\n';
  /** Scales every wait; a day that is still young has little room. */
  pace = 1;

  /** `session` has id, title, project, cwd and model; `path` defaults to the session's own file. */
  constructor(home, session, { now, path, fields } = {}) {
    this.home = home;
    this.session = session;
    this.now = now;
    this.folder = `.claude/projects/${slugOf(session.cwd)}`;
    this.path = path ?? `${this.folder}/${session.id}.jsonl`;
    this.fields = { isSidechain: false, ...fields };
  }

  wait(milliseconds) {
    this.now += Math.max(1, Math.round(milliseconds * this.pace));
  }

  /** A line as it stands, without the fields of a conversation. */
  write(line) {
    this.writeText(JSON.stringify(line) + this.newline);
  }

  writeText(content) {
    this.home.files.append(this.path, content, this.now);
  }

  /** A line of the conversation; `edit` may change it before it is written. */
  say(type, fields, edit) {
    const line = {
      type,
      uuid: this.home.random.uuid(),
      parentUuid: this.lines.at(-1)?.uuid ?? null,
      sessionId: this.session.id,
      timestamp: new Date(this.now).toISOString(),
      cwd: this.session.cwd,
      gitBranch: 'main',
      version: '2.1.290',
      entrypoint: 'cli',
      userType: 'external',
      ...this.fields,
      ...fields,
    };
    edit?.(line);
    this.lines.push(line);
    this.write(line);
  }

  /** Repeats lines of another conversation, changed by `fields`. */
  copy(lines, fields) {
    for (const line of lines) {
      this.lines.push({ ...line, ...fields });
      this.write(this.lines.at(-1));
    }
  }

  prompt(text, fields) {
    this.say('user', { ...fields, message: { role: 'user', content: text } });
  }

  toolResult(text) {
    const content = [
      { type: 'tool_result', tool_use_id: `toolu_${this.home.random.letters(22)}`, content: text },
    ];
    this.say('user', { message: { role: 'user', content } });
  }

  /** Another voice of the same session; `folder` lies below the session's own. */
  agent(folder = 'subagents') {
    const agentId = this.home.random.hex(17);
    const agent = new Conversation(this.home, this.session, {
      now: this.now,
      path: `${this.folder}/${this.session.id}/${folder}/agent-${agentId}.jsonl`,
      fields: { isSidechain: true, agentId },
    });
    agent.pace = this.pace;
    return agent;
  }

  /**
   * One response, as one or more lines that repeat its usage.
   *
   * `tokens.uncovered` are cache writes that the split by lifetime leaves out. Options: model,
   * spelledAs (the model's text in the file), speed, tier (null is written as null), thinking,
   * lines (see #usualLines), counts (false: these lines mean nothing), estimated.
   */
  respond(tokens, options = {}) {
    const random = this.home.random;
    const response = {
      id: `msg_01${random.letters(22)}`,
      requestId: `req_011C${random.letters(20)}`,
      tokens: { ...NO_TOKENS, ...tokens },
      model: options.model ?? this.session.model,
      options: { iterations: random.chance(0.4), ...options },
    };
    const time = this.now;
    const lines = options.lines ?? this.#usualLines(response.tokens.output);
    lines.forEach((line, index) => {
      if (index > 0) this.wait(line.after ?? 900);
      this.#answer(response, { stop: index === lines.length - 1 ? 'end_turn' : null, ...line });
    });
    if (options.counts ?? true) this.#book(response, time);
    return response;
  }

  /** Early snapshots know few of the output tokens; only the last line has them all. */
  #usualLines(output) {
    const random = this.home.random;
    const early = random.weighted([5, 4, 2]);
    const snapshots = Array.from({ length: early }, () => random.whole(1, Math.min(8, output)));
    return [...snapshots.sort((first, second) => first - second), output].map((tokensSoFar) => ({
      output: tokensSoFar,
    }));
  }

  #answer({ id, requestId, tokens, model, options }, { output, stop, edit }) {
    this.say(
      'assistant',
      {
        requestId,
        message: {
          id,
          type: 'message',
          role: 'assistant',
          model: options.spelledAs ?? model,
          content: [{ type: 'text', text: this.home.random.pick(this.home.replies) }],
          stop_reason: stop,
          usage: usageFields(tokens, output ?? tokens.output, options),
        },
      },
      edit,
    );
  }

  #book({ tokens, model, options }, time) {
    const { uncovered, ...usage } = tokens;
    usage.write5m += uncovered;
    this.home.ledger.count({
      session: this.session,
      time,
      lastTime: this.now,
      model,
      usage,
      cost: costOf(model, dayOf(time), usage, options),
      estimated: options.estimated ?? false,
    });
  }
}
