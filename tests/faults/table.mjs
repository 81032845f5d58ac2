#!/usr/bin/env node
// table.mjs LINES OUT: prints what the trials of faults came to, and writes it to OUT as one list.

import { readFileSync, writeFileSync } from 'node:fs';

const [lines, out] = process.argv.slice(2);
const results = readFileSync(lines, 'utf8').split('\n').filter(Boolean).map((line) => JSON.parse(line));
writeFileSync(out, `${JSON.stringify(results, null, 2)}\n`);

const rows = results.map(({ operation, call, error, way, tried, outcomes }) => [
  operation,
  call,
  `${error} ${way}`,
  String(tried),
  Object.entries(outcomes).map(([outcome, count]) => `${count} ${outcome}`).join('; '),
]);
const table = [['operation', 'call', 'fault', 'tried', 'outcomes'], ...rows];
const widths = table[0].map((_, column) => Math.max(...table.map((row) => row[column].length)));
for (const row of table) {
  console.log(row.map((text, column) => text.padEnd(widths[column])).join('  ').trimEnd());
}
const tried = results.reduce((sum, result) => sum + result.tried, 0);
console.log(`${tried} faults tried; they are in ${out}.`);
