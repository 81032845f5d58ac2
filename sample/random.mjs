// A small seeded generator: the same seed makes the same home on every machine.

const ALPHABET = '123456789ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz';

export class Random {
  #state;

  constructor(seed) {
    this.#state = seed >>> 0;
  }

  /** In [0, 1). */
  next() {
    this.#state = (this.#state + 0x6d2b79f5) >>> 0;
    let mixed = this.#state;
    mixed = Math.imul(mixed ^ (mixed >>> 15), mixed | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 0x100000000;
  }

  chance(probability) {
    return this.next() < probability;
  }

  /** A whole number, both ends included. */
  whole(low, high) {
    return low + Math.floor(this.next() * (high - low + 1));
  }

  /** Like whole(), but small numbers are much likelier than large ones. */
  mostlySmall(low, high) {
    return low + Math.floor(this.next() ** 3 * (high - low + 1));
  }

  pick(list) {
    return list[Math.floor(this.next() * list.length)];
  }

  /** The index of one of the weights. */
  weighted(weights) {
    let left = this.next() * weights.reduce((sum, weight) => sum + weight, 0);
    return weights.findIndex((weight) => (left -= weight) < 0);
  }

  /** A key of an object of weights. */
  oneOf(weights) {
    return Object.keys(weights)[this.weighted(Object.values(weights))];
  }

  letters(count) {
    return Array.from({ length: count }, () => this.pick(ALPHABET)).join('');
  }

  hex(count) {
    return Array.from({ length: count }, () => this.whole(0, 15).toString(16)).join('');
  }

  uuid() {
    const variant = this.pick(['8', '9', 'a', 'b']);
    return `${this.hex(8)}-${this.hex(4)}-4${this.hex(3)}-${variant}${this.hex(3)}-${this.hex(12)}`;
  }
}
