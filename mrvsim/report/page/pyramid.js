// Answers questions about any part of a long column quickly, so that an hour draws like a second.

const STEP = 16;

/** The least and the greatest value of a part of a column. */
export class Extremes {
  /** @param {ArrayLike<number>} values */
  constructor(values) {
    this.levels = [{least: values, most: values}];
    for (let below = this.levels[0]; below.least.length > STEP; below = this.levels.at(-1)) {
      this.levels.push(Extremes.above(below));
    }
  }

  static above({least, most}) {
    const size = Math.ceil(least.length / STEP);
    const above = {least: new Float64Array(size), most: new Float64Array(size)};
    for (let i = 0; i < size; ++i) {
      let low = Infinity;
      let high = -Infinity;
      const end = Math.min((i + 1) * STEP, least.length);
      for (let k = i * STEP; k < end; ++k) {
        low = Math.min(low, least[k]);
        high = Math.max(high, most[k]);
      }
      above.least[i] = low;
      above.most[i] = high;
    }
    return above;
  }

  /** Of the values from one index up to, but not including, another. */
  between(from, to) {
    let low = Infinity;
    let high = -Infinity;
    const take = (level, i) => {
      low = Math.min(low, level.least[i]);
      high = Math.max(high, level.most[i]);
    };
    for (const level of this.levels) {
      const isTop = level === this.levels.at(-1);
      while (from < to && (isTop || from % STEP !== 0)) take(level, from++);
      while (from < to && to % STEP !== 0) take(level, --to);
      from /= STEP;
      to /= STEP;
    }
    return {low, high};
  }
}

/** How often each category stands in a part of a column. */
export class Tally {
  /** @param {Uint8Array} categories @param {number} count of categories */
  constructor(categories, count) {
    this.sums = Array.from({length: count}, () => new Uint32Array(categories.length + 1));
    for (let i = 0; i < categories.length; ++i) {
      for (const sums of this.sums) sums[i + 1] = sums[i];
      ++this.sums[categories[i]][i + 1];
    }
  }

  /** @returns {number[]} a count for each category */
  between(from, to) { return this.sums.map((sums) => sums[to] - sums[from]); }
}
