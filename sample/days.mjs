// Calendar days of the local time zone, named by their YYYY-MM-DD text.

const SECOND = 1000;
export const MINUTE = 60 * SECOND;
export const HOUR = 60 * MINUTE;

function parts(day) {
  const [year, month, date] = day.split('-').map(Number);
  return [year, month - 1, date];
}

export function dayOf(time) {
  const date = new Date(time);
  const two = (number) => String(number).padStart(2, '0');
  return `${date.getFullYear()}-${two(date.getMonth() + 1)}-${two(date.getDate())}`;
}

/** Absent unless the text is an existing day. */
export function parseDay(text) {
  if (!/^\d{4}-\d\d-\d\d$/.test(text)) return undefined;
  return dayOf(at(text, 12)) === text ? text : undefined;
}

/** The moment of a local wall-clock time; a time that the clocks skip becomes the next one. */
export function at(day, hour, minute = 0, second = 0, millisecond = 0) {
  return new Date(...parts(day), hour, minute, second, millisecond).getTime();
}

export function shiftDay(day, count) {
  const [year, month, date] = parts(day);
  return dayOf(new Date(year, month, date + count, 12).getTime());
}

/** 0 is Sunday. */
export function weekday(day) {
  return new Date(...parts(day), 12).getDay();
}

/** Whether the clocks change between this day's midnights. */
export function changesClocks(day) {
  const offset = (time) => new Date(time).getTimezoneOffset();
  return offset(at(day, 0)) !== offset(at(shiftDay(day, 1), 0));
}
