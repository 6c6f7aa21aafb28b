// Reads the columns of the page's data. The writer is mrvsim/report/Column.cpp.

/**
 * @typedef {object} Samples
 * @property {number} size
 * @property {Float64Array} line  the number of the line in the log
 * @property {Float64Array} time  milliseconds
 * @property {Int16Array[]} axes  six
 * @property {Uint8Array} kind    index into MOTIONS
 * @property {Uint8Array} fate    index into FATES
 * @property {Uint8Array} wait    the counter of the redraw wait
 */
/** @typedef {Record<string, Float64Array> & {size: number}} Table */
/**
 * @typedef {object} Play
 * @property {Samples} samples
 * @property {Table} ticks
 * @property {Table} keys
 * @property {Table} clicks
 * @property {Table} views
 * @property {Table} notes
 * @property {[string, string, number][]} texts  kind, words and level of notes
 * @property {number | null} redrawDelay
 * @property {number} end  milliseconds; the play begins at 0
 */

/** The motions of samples, by `Samples.kind`. */
export const MOTIONS = ['rest', 'twist', 'push', 'slide'];
export const CLICKS = ['down', 'up', 'moved', 'dragged'];
const COMMAND_KEY = 0x100000;
const ZOOM_SCALE = 10000;
const PIXEL_SCALE = 10;

/**
 * @param {string} text base64
 * @param {number} size how many numbers it holds
 * @param {number} order 1: differences are stored; 2: the differences of these
 */
export function readColumn(text, size, order) {
  const bytes = Uint8Array.from(atob(text), (c) => c.charCodeAt(0));
  const values = new Float64Array(size);
  const sums = [0, 0];
  let at = 0;
  let zeros = 0;
  const nextNumber = () => {
    let number = 0;
    for (let unit = 1;; unit *= 128) {
      const byte = bytes[at++];
      number += (byte & 127) * unit;
      if (byte < 128) return number;
    }
  };
  for (let i = 0; i < size; ++i) {
    let value = 0;
    if (zeros > 0) {
      --zeros;
    } else {
      const number = nextNumber();
      if (number === 0) zeros = nextNumber();
      value = number % 2 === 0 ? number / 2 : -(number + 1) / 2;
    }
    for (let k = order; k-- > 0;) value = sums[k] += value;
    values[i] = value;
  }
  return values;
}

/** @returns {Table} */
function readTable(raw) {
  const table = {size: raw.size};
  for (const [name, text] of Object.entries(raw)) {
    if (name !== 'size') table[name] = readColumn(text, raw.size, inSlopes(name) ? 2 : 1);
  }
  return table;
}

function inSlopes(name) { return name === 'line' || name === 'time'; }

/** @returns {Samples} */
function readSamples(raw) {
  const table = readTable(raw);
  const axes = [0, 1, 2, 3, 4, 5].map((i) => Int16Array.from(table[`axis${i}`]));
  const kind = Uint8Array.from({length: table.size}, (_, i) => motionOf(axes, i));
  const {size, line, time} = table;
  return {
    size,
    line,
    time,
    axes,
    kind,
    fate: Uint8Array.from(table.fate),
    wait: Uint8Array.from(table.wait)
  };
}

/** Which motion of a sample is acted on, as an index into MOTIONS. */
function motionOf(axes, i) {
  const push = Math.abs(axes[1][i]);
  const twist = Math.abs(axes[4][i]);
  const slide = Math.max(Math.abs(axes[0][i]), Math.abs(axes[2][i]));
  if (push + twist + slide === 0) return 0;
  if (twist > push && twist > slide) return 1;
  return push > twist && push > slide ? 2 : 3;
}

function scaleDown(column, scale) {
  for (let i = 0; i < column.length; ++i) column[i] /= scale;
}

/** @returns {Play} */
function readPlay(raw) {
  const samples = readSamples(raw.samples);
  const [ticks, keys, clicks, views, notes] =
      [raw.ticks, raw.keys, raw.clicks, raw.views, raw.notes].map(readTable);
  for (const column of [ticks.x, ticks.y, views.x, views.y]) scaleDown(column, PIXEL_SCALE);
  scaleDown(views.zoom, ZOOM_SCALE);
  // The brush is stored one higher, so that 0 stands for none.
  views.brush = views.brush.map((value) => (value === 0 ? NaN : (value - 1) / PIXEL_SCALE));
  const tables = [samples, ticks, keys, clicks, views, notes];
  const ends = tables.map((table) => (table.size > 0 ? table.time[table.size - 1] : 0));
  return {
    samples,
    ticks,
    keys,
    clicks,
    views,
    notes,
    texts: raw.texts,
    redrawDelay: raw.redrawDelay,
    end: Math.max(1, ...ends)
  };
}

/** @returns {Play[]} */
export function readPlays(text) { return JSON.parse(text).plays.map(readPlay); }

/**
 * The index of the first value that is not less.
 * @param {ArrayLike<number>} values sorted
 * @param {number} low an index that the result is not before
 */
export function lowerBound(values, wanted, low = 0) {
  let high = values.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (values[middle] < wanted)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

/** The index of the last line at or before a time; -1 if there is none. */
export function lastAt(table, time) { return lowerBound(table.time, time + 1e-6) - 1; }

/** The sample that a line of the log follows from; -1 if it has another cause. */
export function causeOf(play, line, time) {
  const index = lowerBound(play.samples.line, line) - 1;
  return index >= 0 && play.samples.time[index] === time ? index : -1;
}

/** The lines of a table that follow from a sample, as a range of indices. */
export function effectsOf(play, table, sample) {
  const {line, time, size} = play.samples;
  const from = lowerBound(table.line, line[sample]);
  const to = lowerBound(table.line, sample + 1 < size ? line[sample + 1] : Infinity);
  const isOfSample = (index) => table.time[index] === time[sample];
  const effects = [];
  for (let i = from; i < to && isOfSample(i); ++i) effects.push(i);
  return effects;
}

/** "zoom" or "pan", and the way: +1 or -1 along the axis. */
export function tickMotion(ticks, i) {
  const sideways = ticks.horizontal[i] !== 0 || (ticks.flags[i] & COMMAND_KEY) !== 0;
  const amount = ticks.horizontal[i] || ticks.vertical[i];
  const isZoom = !sideways && Math.abs(amount) === 1;
  return {isZoom, sideways, way: Math.sign(amount)};
}

/** Numbers of a play, as the header shows them. */
export function countsOf(play) {
  const {samples, ticks, keys, clicks, notes, texts} = play;
  const count = (size, test) => {
    let n = 0;
    for (let i = 0; i < size; ++i)
      if (test(i)) ++n;
    return n;
  };
  const level = (i) => texts[notes.text[i]][2];
  const zooms = count(ticks.size, (i) => tickMotion(ticks, i).isZoom);
  return {
    samples: samples.size,
    zoomTicks: zooms,
    zoomInTicks: count(ticks.size, (i) => tickMotion(ticks, i).isZoom && ticks.vertical[i] > 0),
    panTicks: ticks.size - zooms,
    brushKeys: count(keys.size, (i) => keys.brush[i] === 1 && keys.down[i] === 1),
    keysLeftDown: keysDown(keys).size,
    dropped: count(samples.size, (i) => samples.kind[i] !== 0 && DROPPED.has(samples.fate[i])),
    clicks: clicks.size,
    clicksHeldBack: count(clicks.size, (i) => clicks.passed[i] === 0),
    failures: count(notes.size, (i) => level(i) === 1),
    misuses: count(notes.size, (i) => level(i) === 2),
  };
}

/** The fates of samples that the redraw wait dropped. */
const DROPPED = new Set([4, 5]);

function keysDown(keys) {
  const down = new Set();
  for (let i = 0; i < keys.size; ++i) {
    const name = `${keys.brush[i]} ${keys.code[i]}`;
    if (keys.down[i] === 1)
      down.add(name);
    else
      down.delete(name);
  }
  return down;
}

/** The lines that failed or are misuses, as indices of notes. */
export function problemsOf(play) {
  const problems = [];
  for (let i = 0; i < play.notes.size; ++i) {
    if (play.texts[play.notes.text[i]][2] > 0) problems.push(i);
  }
  return problems;
}
