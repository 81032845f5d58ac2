// Stands in for the sync script: the same arguments, standard input, exit statuses and status
// document, without a server. `standin.json` beside it may tell it to misbehave:
//   { "error": code, "output": text instead of the document, "status": exit status,
//     "signal": the one it dies by, "hold": true (it waits until the file goes) }
// Each call is a line of `standin-calls`: arguments, separated by "|", then "<" and its input.
import { appendFileSync, existsSync, readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';
import { fileURLToPath } from 'node:url';

const beside = (name) => join(dirname(fileURLToPath(import.meta.url)), name);
const read = (name) => (existsSync(beside(name)) ? JSON.parse(readFileSync(beside(name))) : {});

const input = readFileSync(0, 'utf8');
const args = process.argv.slice(2);
const order = read('standin.json');
appendFileSync(beside('standin-calls'), `${args.join('|')}<${input}\n`);
while (order.hold && existsSync(beside('standin.json'))) await pause(10);
if (order.signal) process.kill(process.pid, order.signal);

const status = { id: 'ABCD-EFGH-JKMN', enabled: true, links: [], ...read('sync-status.json') };
const linked = (id) => status.links.filter((link) => link.id === id);
const fitting = input.length >= 6 && input.length <= 128;

/** Each command carries itself out, or tells the error code why not. */
const commands = {
  on: () => void (status.enabled = true),
  off: () => void (status.enabled = false),
  rename: (name) => void (status.name = name),
  password() {
    if (input && !fitting) return 'bad_password';
    status.hasPassword = input !== '';
  },
  link(id) {
    if (!/^\w{4}(-\w{4}){2}$/.test(id)) return 'bad_id';
    if (id === status.id) return 'self';
    if (!fitting) return 'wrong_id_or_password';
    status.links.push({ id, name: 'Laptop', os: 'linux', enabled: true });
  },
  unlink: (id) => void (status.links = status.links.filter((link) => link.id !== id)),
  include: (id, on) => linked(id).forEach((link) => (link.enabled = on === 'on')),
  'delete-history': () => void delete status.historyFrom,
  sync() {
    if (!status.enabled) return 'sync_off';
    status.lastSync = new Date().toISOString();
  },
};

const [command = 'sync', ...rest] = args.filter((arg) => arg !== '--now');
status.error = order.error ?? commands[command](...rest);
const told = JSON.stringify(status);
writeFileSync(beside('sync-status.json'), told);
process.stdout.write(order.output ?? told);
process.exitCode = order.status ?? (status.error ? 1 : 0);
