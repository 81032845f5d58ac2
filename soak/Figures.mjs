// What the programs around the widget write, as large and as odd as it is asked for.

const DAY = 86_400_000; // milliseconds
const MODELS = ['claude-opus-4-5', 'claude-sonnet-4-5', 'claude-haiku-4-5', 'gpt-5.2-codex', 'nobody-knows'];
const TITLES = ['Fix the flaky pipeline', 'إصلاح خط أنابيب الإصدار', '👩‍👩‍👧‍👦 ship it 🚀', '<b>Not bold</b> & not\na second line', '',
  'A title that goes on and on, as if whoever wrote it had been paid by the word'];

const iso = (moment) => new Date(moment).toISOString();
const tokens = (cost) => ({ input: cost * 33e3, output: cost * 67e3, cacheWrite: cost * 233e3, total: cost * 400e3 });

export class Figures {
  #random;

  constructor(random) {
    this.#random = random;
  }

  #cost(most) {
    return Math.round(this.#random.next() * most * 100) / 100;
  }

  #spans(most) {
    const span = (days) => {
      const cost = this.#cost(most * days);
      return { cost, tokens: tokens(cost), sessions: this.#random.whole(0, 9 * days) };
    };
    return { today: span(1), yesterday: span(1), week: span(7), lastWeek: span(7), month: span(30), lastMonth: span(30) };
  }

  #history(count, daysEach, named) {
    return Array.from({ length: Math.ceil(count / daysEach) }, (_, index, ago = count / daysEach - index) => {
      const cost = this.#cost(20 * daysEach);
      const models = Object.fromEntries(MODELS.slice(0, this.#random.whole(1, 5)).map((name) => [name, cost / 5]));
      const day = iso(Date.now() - ago * daysEach * DAY).slice(0, 10);
      return { ...named(day), cost, tokens: tokens(cost), estimated: this.#random.chance(0.1), models };
    });
  }

  #session() {
    const cost = this.#cost(9);
    return { title: this.#random.pick(TITLES), project: this.#random.letters(9), end: iso(Date.now() - this.#random.whole(0, 90) * DAY),
      cost, tokens: tokens(cost), provider: this.#random.pick(['claude', 'codex']), device: 'ABCD-EFGH-JKMN' };
  }

  /** Statistics of so many days; sessions come in any order. */
  statistics(days, sessions) {
    return {
      totals: this.#spans(20),
      providers: { claude: { totals: this.#spans(15) }, codex: { totals: this.#spans(5) } },
      days: this.#history(days, 1, (day) => ({ date: day })),
      weeks: this.#history(days, 7, (day) => ({ start: day })),
      months: this.#history(days, 30, (day) => ({ month: day.slice(0, 7) })),
      sessions: Array.from({ length: sessions }, () => this.#session()),
      devices: [{ id: 'ABCD-EFGH-JKMN', name: this.#random.letters(8), enabled: true, cost: this.#cost(99), self: true }],
    };
  }

  /** One whose reset lies behind or just ahead at times; nothing at others. */
  #window(seconds, percent, resetsAt) {
    if (this.#random.chance(0.2)) return undefined;
    const ahead = this.#random.pick([-60, 2, 5, seconds / 2, seconds]);
    return { [percent]: this.#random.pick([0, 42.9, 100, this.#random.whole(0, 100)]), [resetsAt]: iso(Date.now() + ahead * 1000) };
  }

  #windows(percent, resetsAt) {
    return [this.#window(18_000, percent, resetsAt), this.#window(604_800, percent, resetsAt)];
  }

  /** Claude Code's; mostly old ones, so that the account is asked as well. */
  limits() {
    const [fiveHour, sevenDay] = this.#windows('percent', 'resetsAt');
    return { updatedAt: iso(Date.now() - this.#random.pick([0, 600_000, 7_200_000])), fiveHour, sevenDay };
  }

  codexLimits() {
    const [primary, secondary] = this.#windows('percent', 'resetsAt');
    return { updatedAt: iso(Date.now()), plan: this.#random.pick(['plus', 'pro']),
      primary: primary && { ...primary, minutes: 300 }, secondary: secondary && { ...secondary, minutes: 10_080 } };
  }

  /** What the account's server answers. */
  usage() {
    const [five_hour, seven_day] = this.#windows('utilization', 'resets_at');
    return { five_hour, seven_day };
  }

  syncStatus() {
    const link = () => ({ id: this.#random.letters(12), name: this.#random.letters(8), os: 'linux', enabled: this.#random.chance(0.5), seenAt: iso(Date.now()) });
    return { id: 'ABCD-EFGH-JKMN', enabled: this.#random.chance(0.8), name: this.#random.letters(6), hasPassword: this.#random.chance(0.5),
      links: Array.from({ length: this.#random.whole(0, 6) }, link), lastSync: iso(Date.now()), historyFrom: '2026-01-01',
      error: this.#random.pick([undefined, 'sync_off', 'wrong_id_or_password', 'nobody_knows']) };
  }
}
