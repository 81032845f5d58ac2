// What people work on, and what is said about it.

const CODE = '/home/robin/code';

export const PROJECTS = [
  { project: 'harbour-api', cwd: `${CODE}/harbour-api`, share: 8 },
  { project: 'lantern-ui', cwd: `${CODE}/lantern-ui`, share: 6 },
  // These two have one folder of transcripts between them.
  { project: 'tide-tables', cwd: `${CODE}/tide-tables`, share: 4 },
  { project: 'tide.tables', cwd: `${CODE}/tide.tables`, share: 1 },
  { project: 'paperboat', cwd: `${CODE}/paperboat`, share: 3 },
  { project: 'infra', cwd: `${CODE}/work/infra`, share: 2 },
  { project: 'notes', cwd: '/home/robin/notes', share: 1 },
];

export const TITLES = [
  'Add pagination to the berth search',
  'Fix flaky upload test',
  'Move session storage to Redis',
  'Rename the Vessel model to Ship',
  'Explain the retry queue',
  'Speed up the first paint of the dashboard',
  'Upgrade to the new test runner',
  'Find the memory leak in the importer',
  'Write a migration for tide stations',
  'Dark theme for the settings page',
  'Review the pull request on rate limits',
  'Parse ISO weeks in the report filter',
  'Replace moment with the built-in date functions',
  'Set up preview deployments',
  'Keyboard navigation in the map view',
  'Reduce the size of the container image',
  'Draft the release notes for 3.2',
  'Make the export resumable',
  'Why does the cache miss after midnight?',
  'Split the billing module',
  'Add a health endpoint',
  'Translate the sign-up form',
  'Tidy up the CSS variables',
  'Backfill missing harbour codes',
  'Investigate slow query on arrivals',
  'Document the webhook signatures',
  'Handle empty tide predictions',
  'Convert the chart to SVG',
  'Rotate the staging certificates',
  'Drop support for the old API',
  'Property tests for the scheduler',
  'Sort the arrivals by local time',
  'Unify error messages',
  'Cut the CI time in half',
  'Show tide height in feet as well',
  'Validate imported CSV files',
  'Offline mode for the boat list',
  'Restore the scroll position',
  'Plan the move to the new region',
  'Clean up feature flags',
];

export const LONG_TITLE =
  'Work out why the nightly reconciliation of berth bookings, harbour dues and ' +
  'pilotage fees drifts by a few cents per vessel, write a report that lists every difference with ' +
  'its cause, and propose a change to the rounding rules that the accountants can sign off';
export const RIGHT_TO_LEFT_TITLE = 'תיקון מיון הספינות לפי שעה מקומית';
export const EMOJI_TITLE = '🚢 Ship the arrivals board 🎉';

export const PROMPTS = [
  'Please have a look at this and tell me what you would change.',
  'The test fails on CI but not here. Can you find out why?',
  'Go on with the plan.',
  'Looks good. Now do the same for the other endpoint.',
  'That breaks the old clients, keep the field and mark it deprecated.',
  'Run the tests and fix what fails.',
  'Can you make that shorter?',
  'Commit this with a good message.',
];

export const REPLIES = [
  'I have read the module; the queue drops a job when the connection closes between the two writes.',
  'The tests pass now. The cause was a time zone that the fixture did not set.',
  'Done. I kept the old field and added a note about when it goes away.',
  'There are three callers; two of them can use the new function as it is.',
  'I will look at the migration first, then at the code that reads the table.',
];

export const TOOL_RESULTS = [
  'src/arrivals.ts\nsrc/berths.ts\nsrc/queue.ts',
  '42 passing (3s)',
  'On branch main\nnothing to commit, working tree clean',
];
