// The chart: the lanes on one axis of time, and how it is moved by mouse, pen and fingers.
import {lastAt, lowerBound} from './data.js';
import {roundTimes, TimeScale, timeText} from './scales.js';

const OVERVIEW = 30;
const RULER = 20;
const GAP = 5;
const LABEL_WIDTH = 128;
const CAPTION = 13;
const NARROW = 620;
const LEAST_SPAN = 20;
const CLICK_DISTANCE = 5;
const PICK_DISTANCE = 8;

/** The colours of the style, read once for each theme. */
export class Palette {
  constructor() { this.forget(); }
  forget() {
    this.style = getComputedStyle(document.documentElement);
    this.known = new Map();
  }
  /** @param {string} name of a custom property */
  colour(name) {
    if (!this.known.has(name))
      this.known.set(name, this.style.getPropertyValue(`--${name}`).trim());
    return this.known.get(name);
  }
}

/**
 * Makes a canvas as sharp as the screen. @returns {CanvasRenderingContext2D} cleared, in CSS
 * pixels
 */
export function prepareCanvas(canvas, width, height) {
  const ratio = globalThis.devicePixelRatio || 1;
  if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
    canvas.width = Math.round(width * ratio);
    canvas.height = Math.round(height * ratio);
  }
  const context = canvas.getContext('2d');
  context.setTransform(ratio, 0, 0, ratio, 0, 0);
  context.clearRect(0, 0, width, height);
  return context;
}

/** A stretch of time inside the play's. */
export function clampSpan(from, to, end) {
  const span = Math.min(Math.max(to - from, LEAST_SPAN), end);
  const start = Math.min(Math.max(from, 0), end - span);
  return {from: start, to: start + span};
}

export class Chart {
  /**
   * @param {HTMLCanvasElement} canvas
   * @param {Palette} palette
   * @param {{show: (span: object) => void, look: (time: number, item: object | null) => void,
   *          hover: (item: object | null, time: number | null) => void}} callbacks
   */
  constructor(canvas, palette, callbacks) {
    Object.assign(this, {canvas, palette, callbacks, lanes: [], play: null});
    this.pointers = new Map();
    canvas.addEventListener('wheel', (event) => this.turned(event), {passive: false});
    canvas.addEventListener('pointerdown', (event) => this.pressed(event));
    canvas.addEventListener('pointermove', (event) => this.moved(event));
    canvas.addEventListener('pointerup', (event) => this.released(event));
    canvas.addEventListener('pointercancel', (event) => this.pointers.delete(event.pointerId));
    canvas.addEventListener('pointerleave', () => callbacks.hover(null, null));
  }

  setPlay(play, lanes) {
    this.play = play;
    this.lanes = lanes;
    this.bars = null;
  }

  /** Where everything is, for the canvas's present width. */
  layout() {
    const width = this.canvas.clientWidth;
    const isNarrow = width < NARROW;
    const left = isNarrow ? 0 : LABEL_WIDTH;
    let top = OVERVIEW + RULER + GAP;
    const bands = this.lanes.map((lane) => {
      top += isNarrow ? CAPTION : 0;
      const band = {top, height: lane.height};
      top += lane.height + GAP;
      return band;
    });
    return {width, isNarrow, left, bands, height: top};
  }

  /** @param {{from: number, to: number, cursor: number, hover: number | null}} state */
  draw(state) {
    const {width, isNarrow, left, bands, height} = this.layout();
    this.canvas.style.height = `${height}px`;
    const context = prepareCanvas(this.canvas, width, height);
    this.scale = new TimeScale(state.from, state.to, left, width - left);
    this.overviewScale = new TimeScale(0, this.play.end, left, width - left);
    const colour = (name) => this.palette.colour(name);
    this.drawOverview(context, colour);
    this.drawRuler(context, colour, height);
    this.lanes.forEach((lane, i) => {
      this.drawLabel(context, colour, lane, bands[i], isNarrow, left);
      this.drawLane(context, colour, lane, bands[i], left, width);
    });
    this.drawCursor(context, colour('faint'), state.hover, height, [2, 3]);
    this.drawCursor(context, colour('cursor'), state.cursor, height, []);
  }

  /** Ticks and keys of the whole time, and the part that is shown. */
  drawOverview(context, colour) {
    const {left, width} = this.overviewScale;
    context.fillStyle = colour('band');
    context.fillRect(left, 0, width, OVERVIEW - 4);
    context.fillStyle = colour('faint');
    this.overviewBars().forEach((share, x) => {
      const bar = Math.max(1, share * (OVERVIEW - 8));
      if (share > 0) context.fillRect(left + x, OVERVIEW - 4 - bar, 1, bar);
    });
    const from = this.overviewScale.x(this.scale.from);
    const to = Math.max(from + 3, this.overviewScale.x(this.scale.to));
    context.fillStyle = colour('push');
    context.globalAlpha = 0.16;
    context.fillRect(from, 0, to - from, OVERVIEW - 4);
    context.globalAlpha = 1;
    context.strokeStyle = colour('push');
    context.lineWidth = 1;
    context.strokeRect(from + 0.5, 0.5, to - from - 1, OVERVIEW - 5);
  }

  /** How much happened in each column of pixels of the whole time, as shares of the most. */
  overviewBars() {
    const size = Math.ceil(this.overviewScale.width) + 1;
    if (this.bars?.length === size) return this.bars;
    const counts = new Float64Array(size);
    for (const {time} of [this.play.ticks, this.play.keys]) {
      for (const at of time)
        ++counts[Math.floor(this.overviewScale.x(at) - this.overviewScale.left)];
    }
    const most = Math.max(1, ...counts);
    this.bars = counts.map((count) => count / most);
    return this.bars;
  }

  drawRuler(context, colour, height) {
    const {from, to, left, width} = this.scale;
    const times = roundTimes(from, to, Math.max(2, width / 90));
    const step = times.length > 1 ? times[1] - times[0] : to - from;
    context.font = this.font(11);
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    for (const time of times) {
      const x = Math.round(this.scale.x(time)) + 0.5;
      context.fillStyle = colour('line');
      context.fillRect(x, OVERVIEW + RULER - 2, 1, height);
      const text = timeText(time, step, to >= 60000);
      const half = context.measureText(text).width / 2;
      context.fillStyle = colour('faint');
      context.fillText(
          text, Math.min(Math.max(x, left + half), left + width - half), OVERVIEW + RULER / 2);
    }
  }

  drawLabel(context, colour, lane, band, isNarrow, left) {
    const end = isNarrow ? this.scale.width : left - 10;
    const hasRoom = band.height >= 26;
    const middle = isNarrow ? band.top - 7 : band.top + band.height / 2;
    const note = lane.note && (isNarrow || hasRoom || lane.note.length <= 3) ? lane.note : '';
    context.textBaseline = 'middle';
    context.fillStyle = colour('ink');
    context.font = this.font(12);
    context.textAlign = 'left';
    const isTwoLines = note !== '' && !isNarrow;
    context.fillText(lane.label, 0, isTwoLines ? middle - 6 : middle);
    context.fillStyle = colour('faint');
    context.font = this.font(10);
    context.textAlign = isNarrow ? 'right' : 'left';
    if (note) context.fillText(note, isNarrow ? end : 0, isTwoLines ? middle + 7 : middle);
  }

  drawLane(context, colour, lane, band, left, width) {
    context.save();
    context.beginPath();
    context.rect(left, band.top - 1, width - left, band.height + 2);
    context.clip();
    context.fillStyle = colour('band');
    context.globalAlpha = 0.55;
    context.fillRect(left, band.top, width - left, band.height);
    context.globalAlpha = 1;
    lane.draw({context, colour, scale: this.scale}, band);
    context.restore();
  }

  drawCursor(context, stroke, time, height, dash) {
    if (time === null || time < this.scale.from || time > this.scale.to) return;
    const x = Math.round(this.scale.x(time)) + 0.5;
    context.strokeStyle = stroke;
    context.lineWidth = 1;
    context.setLineDash(dash);
    context.beginPath();
    context.moveTo(x, OVERVIEW);
    context.lineTo(x, height);
    context.stroke();
    context.setLineDash([]);
  }

  font(size) { return `${size}px ${getComputedStyle(this.canvas).fontFamily}`; }

  place(event) {
    const box = this.canvas.getBoundingClientRect();
    return {x: event.clientX - box.left, y: event.clientY - box.top};
  }

  /** The line of the log at a place: of the lane there, or the sample at that time. */
  pick({x, y}) {
    const {bands} = this.layout();
    const index = bands.findIndex(({top, height}) => y >= top - GAP && y <= top + height);
    const lane = this.lanes[index];
    if (lane && lane.table !== 'samples') {
      const near = this.nearest(lane, x);
      if (near) return near;
    }
    const sample = lastAt(this.play.samples, this.scale.time(x));
    return sample < 0 ? null : {table: 'samples', index: sample};
  }

  /** The lane's line nearest to a place, if it is near enough. */
  nearest(lane, x) {
    const table = this.play[lane.table];
    const time = this.scale.time(x);
    const reach = PICK_DISTANCE * this.scale.pixel;
    let best = null;
    for (let i = lowerBound(table.time, time - reach); i < table.size; ++i) {
      if (table.time[i] > time + reach) break;
      const distance = Math.abs(table.time[i] - time);
      const isIn = lane.picks === undefined || lane.picks(i);
      if (isIn && (best === null || distance < best.distance)) best = {index: i, distance};
    }
    if (best === null && lane.table === 'views' && lastAt(table, time) >= 0) {
      best = {index: lastAt(table, time)};
    }
    return best && {table: lane.table, index: best.index};
  }

  zoomAt(x, factor) {
    const time = this.scale.time(x);
    const {from, to} = this.scale;
    this.show(time - (time - from) * factor, time + (to - time) * factor);
  }

  /** Shows a stretch of time. Pointers that move again before it is drawn go on from there. */
  show(from, to) {
    const span = clampSpan(from, to, this.play.end);
    this.scale = new TimeScale(span.from, span.to, this.scale.left, this.scale.width);
    this.callbacks.show(span);
  }

  turned(event) {
    event.preventDefault();
    const isSideways = event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY);
    const amount = event.deltaY || event.deltaX;
    if (isSideways) {
      const move = (event.deltaX || amount) * this.scale.pixel;
      this.show(this.scale.from + move, this.scale.to + move);
    } else {
      this.zoomAt(this.place(event).x, Math.exp(Math.max(-100, Math.min(100, amount)) * 0.003));
    }
  }

  pressed(event) {
    this.canvas.setPointerCapture(event.pointerId);
    const start = this.place(event);
    const isOverview = start.y < OVERVIEW;
    this.pointers.set(event.pointerId, {start, last: start, isDrag: false, isOverview});
    if (isOverview) this.centreOverviewAt(start.x);
  }

  centreOverviewAt(x) {
    const time = this.overviewScale.time(x);
    const half = (this.scale.to - this.scale.from) / 2;
    this.show(time - half, time + half);
  }

  moved(event) {
    const place = this.place(event);
    const pointer = this.pointers.get(event.pointerId);
    if (!pointer) {
      this.callbacks.hover(this.pick(place), this.scale.time(place.x));
      return;
    }
    if (pointer.isOverview) {
      this.centreOverviewAt(place.x);
    } else if (this.pointers.size === 2) {
      this.pinch(pointer, place);
    } else {
      pointer.isDrag ||= Math.abs(place.x - pointer.start.x) > CLICK_DISTANCE;
      const move = (pointer.last.x - place.x) * this.scale.pixel;
      if (pointer.isDrag) this.show(this.scale.from + move, this.scale.to + move);
    }
    if (pointer.isDrag || pointer.isOverview || this.pointers.size === 2) pointer.last = place;
  }

  /** Keeps the times under two fingers under them. */
  pinch(pointer, place) {
    const other = [...this.pointers.values()].find((each) => each !== pointer);
    const times = [this.scale.time(pointer.last.x), this.scale.time(other.last.x)];
    pointer.isDrag = other.isDrag = true;
    const distance = other.last.x - place.x;
    if (Math.abs(distance) < 1) return;
    const pixel = (times[1] - times[0]) / distance;
    if (!(pixel > 0)) return;
    const from = times[0] - (place.x - this.scale.left) * pixel;
    this.show(from, from + this.scale.width * pixel);
  }

  released(event) {
    const pointer = this.pointers.get(event.pointerId);
    this.pointers.delete(event.pointerId);
    if (!pointer || pointer.isDrag || pointer.isOverview) return;
    const item = this.pick(pointer.start);
    const time = item && item.table !== 'samples' && item.table !== 'views' ?
        this.play[item.table].time[item.index] :
        this.scale.time(pointer.start.x);
    this.callbacks.look(Math.min(Math.max(time, 0), this.play.end), item);
  }
}
