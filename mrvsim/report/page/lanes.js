// The lanes of the chart: what each shows, and how it is drawn.
import {lowerBound, MOTIONS, problemsOf, tickMotion} from './data.js';
import {Extremes, Tally} from './pyramid.js';
import {logarithmic, numberText, signedLogarithmic} from './scales.js';
import {FATES, MOTION_WORDS, noteOf, zoomText} from './words.js';


/** @typedef {{top: number, height: number}} Band  the part of the canvas that a lane has */
/**
 * @typedef {object} Canvas  what lanes draw with
 * @property {CanvasRenderingContext2D} context
 * @property {import('./scales.js').TimeScale} scale
 * @property {(name: string) => string} colour  of a custom property of the style
 */
/**
 * @typedef {object} Lane
 * @property {string} label
 * @property {number} height  pixels
 * @property {string} [note]  the ends of its scale
 * @property {Item['table']} table  that a pointer on it picks from
 * @property {(i: number) => boolean} [picks]  whether a line of the table stands in the lane
 * @property {(canvas: Canvas, band: Band) => void} draw
 */

const AXES = [
  {label: 'Push, pull', axis: 1, colour: 'push'},
  {label: 'Slide sideways', axis: 0, colour: 'slide'},
  {label: 'Slide up, down', axis: 2, colour: 'slide'},
  {label: 'Twist', axis: 4, colour: 'twist'},
  {label: 'Turn 1 (unused)', axis: 3, colour: 'turn'},
  {label: 'Turn 3 (unused)', axis: 5, colour: 'turn'},
];
const LONGEST_WAIT = 51;
const EQUAL = 1e-6;

/** The indices of a table's lines that a scale shows, with one on each side. */
function shownRange(table, scale) {
  return [
    Math.max(0, lowerBound(table.time, scale.from) - 1),
    Math.min(table.size, lowerBound(table.time, scale.to) + 1)
  ];
}

/** Calls `draw` for each column of pixels that holds lines, with their range. */
function eachColumn(table, scale, draw) {
  let from = lowerBound(table.time, scale.from);
  for (let x = 0; x < scale.width; ++x) {
    const end = scale.time(scale.left + x + 1);
    const to = lowerBound(table.time, end, from);
    if (to > from) draw(scale.left + x, from, to);
    from = to;
  }
}

/** A line through values; if it is dense, a bar from the least to the greatest in each pixel. */
function drawLine({context, scale}, table, values, extremes, place, isStepped) {
  const [from, to] = shownRange(table, scale);
  context.beginPath();
  if (to - from <= 2 * scale.width) {
    for (let i = from; i < to; ++i) {
      const x = scale.x(table.time[i]);
      if (isStepped && i > from) context.lineTo(x, place(values[i - 1]));
      context.lineTo(x, place(values[i]));
    }
    if (isStepped && to === table.size && to > from) {
      context.lineTo(scale.left + scale.width, place(values[to - 1]));
    }
  } else {
    eachColumn(table, scale, (x, first, end) => {
      const {low, high} = extremes.between(first, end);
      context.lineTo(x + 0.5, place(low));
      context.lineTo(x + 0.5, place(high) - 0.5);
    });
  }
  context.stroke();
}

/** @returns {Lane} */
function axisLane(samples, {label, axis, colour}, most) {
  const values = samples.axes[axis];
  const extremes = new Extremes(values);
  return {
    label,
    height: 28,
    table: 'samples',
    note: axis === AXES[0].axis ? `all ±${numberText(most)} counts` : '',
    draw(canvas, {top, height}) {
      const {context} = canvas;
      const middle = top + height / 2;
      const place = (value) => middle - (value / most) * (height / 2 - 2);
      context.fillStyle = canvas.colour('line');
      context.fillRect(canvas.scale.left, middle - 0.5, canvas.scale.width, 1);
      context.strokeStyle = canvas.colour(colour);
      context.lineWidth = 1.25;
      drawLine(canvas, samples, values, extremes, place, false);
    },
  };
}

/** The typical time between samples. */
function intervalOf({time, size}) {
  const gaps = [];
  for (let i = 1; i < Math.min(size, 200); ++i) gaps.push(time[i] - time[i - 1]);
  gaps.sort((a, b) => a - b);
  return gaps[gaps.length >> 1] || 10;
}

/**
 * Samples in colours by category; if they are dense, their shares in each
 * pixel. @returns {Lane}
 */
function categoryLane(label, samples, categories, colours, interval) {
  const tally = new Tally(categories, colours.length);
  // A sample lasts until the next one, or for a while.
  const endOf = (i) => Math.min(
      i + 1 < samples.size ? samples.time[i + 1] : Infinity, samples.time[i] + 2 * interval);
  const drawSamples = ({context, scale, colour}, {top, height}) => {
    const [from, to] = shownRange(samples, scale);
    const gap = interval / scale.pixel > 6 ? 1 : 0;
    for (let i = from; i < to; ++i) {
      const first = i;
      const isSame = () =>
          categories[i + 1] === categories[first] && endOf(i) === samples.time[i + 1];
      while (gap === 0 && i + 1 < to && isSame()) ++i;
      const x = scale.x(samples.time[first]);
      context.fillStyle = colour(colours[categories[first]]);
      context.fillRect(x, top, Math.max(1, scale.x(endOf(i)) - x - gap), height);
    }
  };
  const drawShares = ({context, scale, colour}, {top, height}) => {
    eachColumn(samples, scale, (x, from, to) => {
      let bottom = top + height;
      tally.between(from, to).forEach((count, category) => {
        if (count === 0) return;
        const part = (count / (to - from)) * height;
        context.fillStyle = colour(colours[category]);
        context.fillRect(x, bottom - part, 1, part);
        bottom -= part;
      });
    });
  };
  return {
    label,
    height: 20,
    table: 'samples',
    draw(canvas, band) {
      const [from, to] = shownRange(samples, canvas.scale);
      (to - from <= canvas.scale.width ? drawSamples : drawShares)(canvas, band);
    },
  };
}

/** @returns {Lane} */
function waitLane(samples) {
  const extremes = new Extremes(samples.wait);
  const most = Math.max(1, extremes.between(0, samples.size).high);
  const place = (value, {top, height}) => top + height - (value / most) * height;
  return {
    label: 'Wait counter *',
    height: 30,
    table: 'samples',
    note: `0–${most} of ${LONGEST_WAIT}`,
    draw({context, scale, colour}, band) {
      context.fillStyle = colour('waited');
      const bottom = band.top + band.height;
      const bar = (x, width, value) => {
        const y = place(value, band);
        context.fillRect(x, y, width, bottom - y);
      };
      const [from, to] = shownRange(samples, scale);
      if (to - from > scale.width) {
        eachColumn(samples, scale, (x, first, end) => bar(x, 1, extremes.between(first, end).high));
        return;
      }
      for (let i = from; i < to && i + 1 < samples.size; ++i) {
        const x = Math.round(scale.x(samples.time[i]));
        const end = Math.round(scale.x(samples.time[i + 1]));
        if (samples.wait[i] > 0) bar(x, Math.max(1, end - x), samples.wait[i]);
      }
    },
  };
}

/** @typedef {{way: number, colour: string}} Mark  way: 1 up from the middle, -1 down, 0 both */
/** @typedef {(i: number) => Mark | null} MarkOf  the mark of a table's line; null: it has none */

/** Marks that fall on one another are drawn once. @param {(Mark | null)[]} marks */
function drawMarks({context, scale, colour}, {top, height}, rows, marks) {
  const middle = top + height / 2;
  const from = lowerBound(rows.time, scale.from);
  const to = lowerBound(rows.time, scale.to + EQUAL);
  const width = to - from > scale.width / 4 ? 1 : 2;
  const last = scale.left + scale.width - width;
  const drawn = [];  // for each way: where the last mark was drawn, and its colour
  for (let i = from; i < to; ++i) {
    const mark = marks[i];
    if (mark === null) continue;
    const x = Math.min(Math.round(scale.x(rows.time[i])), last);
    const before = drawn[mark.way + 1];
    if (before?.x === x && before.colour === mark.colour) continue;
    drawn[mark.way + 1] = {x, colour: mark.colour};
    context.fillStyle = colour(mark.colour);
    const y = mark.way < 0 ? middle : top + 1;
    context.fillRect(x, y, width, mark.way === 0 ? height - 2 : height / 2 - 1);
  }
}

/** A mark for each line of a table. @param {MarkOf} markOf @returns {Lane} */
function markLane(label, table, rows, markOf, note) {
  const marks = Array.from({length: rows.size}, (_, i) => markOf(i));
  return {
    label,
    height: 22,
    table,
    note,
    picks: (i) => marks[i] !== null,
    draw(canvas, band) {
      const {context, scale, colour} = canvas;
      context.fillStyle = colour('line');
      if (rows.size > 0)
        context.fillRect(scale.left, band.top + band.height / 2 - 0.5, scale.width, 1);
      drawMarks(canvas, band, rows, marks);
    },
  };
}

function rangeOf(values) {
  let low = Infinity;
  let high = -Infinity;
  for (const value of values) {
    if (value < low) low = value;
    if (value > high) high = value;
  }
  return low <= high ? [low, high] : [1, 1];
}

/** A value of the host's view that stays until it changes. @returns {Lane} */
function levelLane(label, views, columns, scaleOf, text) {
  const [low, high] =
      rangeOf(columns.flatMap(({values}) => rangeOf(values.filter(Number.isFinite))));
  const share = low === high ? () => 0.5 : scaleOf(low, high);
  const lines = columns.map((column) => ({...column, extremes: new Extremes(column.values)}));
  return {
    label,
    height: 40,
    table: 'views',
    note: views.size === 0 ? '' :
        low === high       ? text(low) :
                             `${text(low)} – ${text(high)}`,
    draw(canvas, {top, height}) {
      const place = (value) => top + height - 3 - share(value) * (height - 6);
      for (const {values, colour, dash, extremes} of lines) {
        canvas.context.strokeStyle = canvas.colour(colour);
        canvas.context.lineWidth = 1.5;
        canvas.context.setLineDash(dash);
        drawLine(canvas, views, values, extremes, place, true);
      }
      canvas.context.setLineDash([]);
    },
  };
}

function tickMark(play, i, wantsZoom) {
  const {isZoom, way} = tickMotion(play.ticks, i);
  return isZoom === wantsZoom ? {way, colour: wantsZoom ? 'push' : 'slide'} : null;
}

function keyMark({keys}, i) {
  if (keys.down[i] === 0) return null;
  return keys.brush[i] ? {way: 1, colour: 'twist'} : {way: -1, colour: 'view'};
}

function callMark(play, i) { return noteOf(play, i).level === 0 ? {way: 0, colour: 'view'} : null; }

function problemMark(play, i) {
  const {level} = noteOf(play, i);
  return level === 0 ? null : {way: 0, colour: level === 2 ? 'bad' : 'nothing'};
}

/** All lanes of a play, from top to bottom. @returns {Lane[]} */
export function lanesOf(play) {
  const {samples, ticks, keys, clicks, views, notes} = play;
  const most = Math.max(1, ...samples.axes.map((axis) => Math.max(...rangeOf(axis).map(Math.abs))));
  const interval = intervalOf(samples);
  const column = (values, colour, dash = []) => ({values, colour, dash});
  const pixels = (value) => `${numberText(value)} px`;
  const lanes = [
    ...AXES.map((axis) => axisLane(samples, axis, most)),
    categoryLane('Motion', samples, samples.kind, MOTIONS, interval),
    categoryLane('Outcome *', samples, samples.fate, FATES.map(({colour}) => colour), interval),
    waitLane(samples),
    markLane('Zoom ticks', 'ticks', ticks, (i) => tickMark(play, i, true), 'in ↑ out ↓'),
    markLane('Pan ticks', 'ticks', ticks, (i) => tickMark(play, i, false), '→↓ above, ←↑ below'),
    markLane('Keys', 'keys', keys, (i) => keyMark(play, i), 'brush ↑ other ↓'),
    markLane(
        'Clicks', 'clicks', clicks,
        (i) => ({way: clicks.passed[i] ? 1 : -1, colour: clicks.passed[i] ? 'view' : 'waited'}),
        'passed ↑ held ↓'),
    levelLane('Zoom', views, [column(views.zoom, 'push')], logarithmic, zoomText),
    levelLane(
        'View’s corner', views, [column(views.x, 'slide'), column(views.y, 'view', [4, 3])],
        signedLogarithmic, numberText),
    levelLane('Brush', views, [column(views.brush, 'twist')], logarithmic, pixels),
    markLane('Host, system', 'notes', notes, (i) => callMark(play, i)),
  ];
  lanes.push(markLane(
      'Faults, misuse', 'notes', notes, (i) => problemMark(play, i),
      String(problemsOf(play).length)));
  return lanes;
}

/** The colours of the lanes with their meanings. */
export function legendOf() {
  return [
    {title: 'Motion', entries: MOTIONS.map((colour, i) => ({colour, name: MOTION_WORDS[i]}))},
    {title: 'Outcome', entries: FATES.map(({colour, name}) => ({colour, name}))},
  ];
}
