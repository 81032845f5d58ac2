// Lines that are broken, made up or meaningless, among lines that count.

const TOKENS = { input: 9, output: 210, read: 33_000, write5m: 900 };
const MEGABYTE = 1024 * 1024;

const skipped = (talk, tokens, options) => talk.respond(tokens, { ...options, counts: false });

function tornLines(talk) {
  talk.respond(TOKENS);
  talk.newline = '';
  skipped(talk, TOKENS, { lines: [{}] });
}

function tornInTheMiddle(talk) {
  talk.respond(TOKENS);
  talk.writeText('{"type":"assistant","sessionId":"');
}

function brokenJson(talk) {
  const { random } = talk.home;
  const noise = Buffer.from(Array.from({ length: 400 }, () => random.whole(11, 255)));
  talk.respond(TOKENS);
  for (const rubbish of [
    noise,
    '\0\0\0\0',
    '{"type":"assistant",',
    '}',
    '[1,2',
    '"',
    '{"type":"assistant"}}',
    '',
  ]) {
    talk.writeText(rubbish);
    talk.writeText('\n');
  }
  talk.respond(TOKENS);
}

function unexpectedShapes(talk) {
  for (const line of [
    null,
    42,
    'assistant',
    [],
    {},
    { type: 7 },
    { type: 'assistant' },
    { type: 'assistant', message: null },
    { type: 'assistant', message: { usage: [] } },
    { type: 'from-the-future', message: { usage: { output_tokens: 5 } } },
    { type: 'attachment', attachment: { type: 'file' } },
    { type: 'file-history-snapshot' },
  ]) {
    talk.write(line);
  }
  talk.respond(TOKENS);
}

function impossibleNumbers(talk) {
  const lines = [{}];
  for (const number of [-1, 2 ** 53 + 2, 1e300]) {
    skipped(talk, { ...TOKENS, output: number }, { lines });
    skipped(talk, { ...TOKENS, read: number }, { lines });
  }
  const text = JSON.stringify({ ...talk.lines.at(-1), uuid: talk.home.random.uuid() });
  talk.writeText(`${text.replace('"output_tokens":210', '"output_tokens":NaN')}\n`);
  // It would vanish without any usage of its own.
  talk.respond(TOKENS);
}

/** One line of a response is impossible, the next one repairs it. */
function impossibleNumberRepaired(talk) {
  const negative = (line) => {
    line.message.usage.input_tokens = -40;
  };
  talk.respond(TOKENS, { lines: [{ edit: negative }, {}] });
}

function noTime(talk) {
  talk.respond(TOKENS);
  skipped(talk, TOKENS, {
    lines: [
      {
        edit: (line) => {
          delete line.timestamp;
        },
      },
    ],
  });
  skipped(talk, TOKENS, {
    lines: [
      {
        edit: (line) => {
          line.timestamp = 'yesterday';
        },
      },
    ],
  });
}

function errorsOfTheService(talk) {
  const synthetic = (line) => {
    line.message.model = '<synthetic>';
  };
  const failed = (line) => {
    line.isApiErrorMessage = true;
  };
  const limited = (line) => {
    synthetic(line);
    failed(line);
    const quotaLimits = {
      status: 'rejected',
      resetsAt: Math.round(talk.now / 1000),
      rateLimitType: 'five_hour',
    };
    Object.assign(line, { error: 'rate_limit', apiErrorStatus: 429, quotaLimits });
  };
  talk.respond(TOKENS);
  skipped(talk, {}, { lines: [{ output: 0, edit: limited }] });
  skipped(talk, TOKENS, { lines: [{ edit: synthetic }] });
  skipped(talk, TOKENS, { lines: [{ edit: failed }] });
}

/** Claude Code's own sums cover helper calls too; they are never added. */
function ownSums(talk) {
  for (const totalCostUSD of [0.02, 0.9, 4.75]) {
    talk.respond(TOKENS);
    talk.write({
      type: 'cost-state',
      sessionId: talk.session.id,
      totalCostUSD,
      modelUsage: {
        [`${talk.session.model}[1m]`]: {
          inputTokens: 900,
          outputTokens: 80_000,
          costUSD: totalCostUSD,
        },
      },
      hasUnknownModelCost: false,
    });
    talk.wait(8_000);
  }
}

function hugeLine(talk) {
  talk.respond(TOKENS);
  const pad = (line) => {
    line.message.content[0].text = 'x'.repeat(9 * MEGABYTE);
  };
  if (!talk.home.small) skipped(talk, TOKENS, { lines: [{ edit: pad }] });
  talk.respond(TOKENS);
}

const written = (newline, mark) => (talk) => {
  talk.newline = newline;
  if (mark) talk.home.files.prepend(talk.path, mark);
  talk.respond(TOKENS);
  talk.wait(7_000);
  talk.respond(TOKENS);
};

export const rubbish = [
  [44, 'A last line without its end', tornLines],
  [44, 'A last line torn in the middle', tornInTheMiddle],
  [45, 'Broken lines in between', brokenJson],
  [45, 'Lines of unexpected shape', unexpectedShapes],
  [46, 'Impossible numbers', impossibleNumbers],
  [46, 'An impossible number, then the right one', impossibleNumberRepaired],
  [47, 'Answers without a time', noTime],
  [47, 'Errors of the service', errorsOfTheService],
  [48, 'Sums that Claude Code made itself', ownSums],
  [49, 'A line of nine megabytes', hugeLine],
  [50, 'A byte-order mark and Windows line ends', written('\r\n', '\ufeff')],
  [50, 'Windows line ends', written('\r\n')],
];
