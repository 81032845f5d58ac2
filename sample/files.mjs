// The files of a sample home, gathered in memory and written in one go.

import { mkdirSync, utimesSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';

export class Files {
  #files = new Map();

  /** Appends text or bytes; the file's date becomes the latest `time` given. */
  append(path, content, time) {
    const file = this.#files.get(path) ?? { chunks: [], time: 0 };
    file.chunks.push(typeof content === 'string' ? Buffer.from(content) : content);
    file.time = Math.max(file.time, time);
    this.#files.set(path, file);
  }

  /** Puts text before everything that the file already has. */
  prepend(path, content) {
    this.#files.get(path).chunks.unshift(Buffer.from(content));
  }

  writeBelow(folder) {
    for (const [path, { chunks, time }] of this.#files) {
      const target = join(folder, path);
      mkdirSync(dirname(target), { recursive: true });
      writeFileSync(target, Buffer.concat(chunks));
      utimesSync(target, time / 1000, time / 1000);
    }
  }
}
