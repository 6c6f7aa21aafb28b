// The document in the host's window: a drawn landscape under the view's zoom and corner.
import {prepareCanvas} from './chart.js';
import {lastAt, tickMotion} from './data.js';

// The log does not say how large the window is; this is the size of a scenario's.
const WINDOW = {
  width: 800,
  height: 600
};
const USUAL_CORNER = {
  x: 100,
  y: 250
};
const FLASH = 120;
const MOST_PATH_POINTS = 1500;
const SCENE = {
  sky: ['#9fd0ef', '#fdf1d8'],
  sun: '#ffd166',
  far: '#8fa9bf',
  near: '#5d7f78',
  meadow: '#a9c27a',
  lake: '#6fb0d3',
  tree: '#3f6b4f',
  trunk: '#7a5a3f'
};

/**
 * Where the window's content begins on the screen: a zoom keeps the place under the pointer, so the
 * view before and after a zoom tick says where that is in the window.
 */
function cornerOf({ticks, views}) {
  for (let i = 0; i < ticks.size; ++i) {
    const after = lastAt(views, ticks.time[i]);
    if (!tickMotion(ticks, i).isZoom || after < 0 || views.line[after] < ticks.line[i]) continue;
    const before = after > 0 ?
        {zoom: views.zoom[after - 1], x: views.x[after - 1], y: views.y[after - 1]} :
        {zoom: 1, x: 0, y: 0};
    const ratio = views.zoom[after] / before.zoom;
    if (Math.abs(ratio - 1) < 0.01) continue;
    const fixed = (now, then) => (now - ratio * then) / (1 - ratio);
    return {
      x: Math.round(ticks.x[i] - fixed(views.x[after], before.x)),
      y: Math.round(ticks.y[i] - fixed(views.y[after], before.y))
    };
  }
  return USUAL_CORNER;
}

/** The place of the document in the middle of the window. */
function middleAt({views}, i) {
  return {
    x: (WINDOW.width / 2 - views.x[i]) / views.zoom[i],
    y: (WINDOW.height / 2 - views.y[i]) / views.zoom[i]
  };
}

/** The least rectangle with all places that come to the middle of the window. */
function wayOf(play) {
  const way = {left: 0, top: 0, right: WINDOW.width, bottom: WINDOW.height};
  for (let i = 0; i < play.views.size; ++i) {
    const {x, y} = middleAt(play, i);
    way.left = Math.min(way.left, x);
    way.top = Math.min(way.top, y);
    way.right = Math.max(way.right, x);
    way.bottom = Math.max(way.bottom, y);
  }
  return way;
}

/** A document that reaches as far to the right and down as the window goes. */
function documentSizeOf({right, bottom}) {
  return {width: Math.ceil(right / 200) * 200, height: Math.ceil(bottom / 200) * 200};
}

export class Picture {
  /** @param {HTMLCanvasElement} canvas @param {import('./chart.js').Palette} palette */
  constructor(canvas, palette) { Object.assign(this, {canvas, palette}); }

  setPlay(play) {
    this.play = play;
    this.corner = cornerOf(play);
    this.way = wayOf(play);
    this.size = documentSizeOf(this.way);
  }

  /** What the host shows at a time. */
  viewAt(time) {
    const {views} = this.play;
    const i = lastAt(views, time);
    if (i < 0) return {zoom: 1, x: 0, y: 0, brush: NaN, index: -1};
    return {zoom: views.zoom[i], x: views.x[i], y: views.y[i], brush: views.brush[i], index: i};
  }

  /** Where the pointer is in the window: where the last tick was posted, as the log has it. */
  pointerAt(time) {
    const {ticks} = this.play;
    if (ticks.size === 0) return null;
    const i = Math.max(0, lastAt(ticks, time));
    return {x: ticks.x[i] - this.corner.x, y: ticks.y[i] - this.corner.y};
  }

  draw(time) {
    const width = this.canvas.clientWidth;
    const height = (width * WINDOW.height) / WINDOW.width;
    const context = prepareCanvas(this.canvas, width, height);
    const view = this.viewAt(time);
    context.save();
    context.scale(width / WINDOW.width, width / WINDOW.width);
    context.fillStyle = this.palette.colour('rest');
    context.fillRect(0, 0, WINDOW.width, WINDOW.height);
    this.drawDocument(context, view);
    this.drawPointer(context, view, time);
    this.drawFlash(context, time);
    this.drawMap(context, view);
    context.restore();
  }

  drawDocument(context, view) {
    context.save();
    context.translate(view.x, view.y);
    context.scale(view.zoom, view.zoom);
    context.shadowColor = 'rgb(0 0 0 / 0.35)';
    context.shadowBlur = 12;
    context.fillStyle = '#ffffff';
    context.fillRect(0, 0, this.size.width, this.size.height);
    context.shadowBlur = 0;
    context.save();
    context.beginPath();
    context.rect(0, 0, this.size.width, this.size.height);
    context.clip();
    drawScene(context, this.size);
    context.restore();
    drawGrid(context, view, this.palette.colour('grid'));
    context.restore();
  }

  drawPointer(context, view, time) {
    const place = this.pointerAt(time);
    if (!place) return;
    if (view.brush > 0) {
      const radius = Math.max(1, (view.brush / 2) * view.zoom);
      for (const [colour, wide] of [['#000', 3.5], ['#fff', 1.5]]) {
        context.strokeStyle = colour;
        context.lineWidth = wide;
        context.beginPath();
        context.arc(place.x, place.y, radius, 0, 2 * Math.PI);
        context.stroke();
      }
    }
    context.fillStyle = '#fff';
    context.strokeStyle = '#000';
    context.lineWidth = 2;
    context.beginPath();
    for (const [x, y] of [[0, 0], [0, 24], [6, 18], [10, 27], [14, 25], [10, 16], [18, 16]]) {
      context.lineTo(place.x + x, place.y + y);
    }
    context.closePath();
    context.fill();
    context.stroke();
  }

  /** A badge for a tick that was posted just before. */
  drawFlash(context, time) {
    const {ticks} = this.play;
    const i = lastAt(ticks, time);
    if (i < 0 || time - ticks.time[i] > FLASH) return;
    const {isZoom, sideways, way} = tickMotion(ticks, i);
    const sign = isZoom ? (way > 0 ? '+' : '−') :
        sideways        ? (way > 0 ? '→' : '←') :
        way > 0         ? '↓' :
                          '↑';
    context.globalAlpha = 1 - (time - ticks.time[i]) / (2 * FLASH);
    context.fillStyle = this.palette.colour(isZoom ? 'push' : 'slide');
    context.beginPath();
    context.arc(44, 44, 26, 0, 2 * Math.PI);
    context.fill();
    context.fillStyle = this.palette.colour('card');
    context.font = 'bold 34px sans-serif';
    context.textAlign = 'center';
    context.textBaseline = 'middle';
    context.fillText(sign, 44, 46);
    context.globalAlpha = 1;
  }

  /** The whole document small, with the part that the window shows and the way there. */
  drawMap(context, view) {
    const {left, top} = this.way;
    const [wide, high] = [this.size.width - left, this.size.height - top];
    const scale = Math.min(200 / wide, 150 / high);
    const [width, height] = [wide * scale, high * scale];
    context.save();
    context.translate(WINDOW.width - width - 14, WINDOW.height - height - 14);
    context.fillStyle = this.palette.colour('card');
    context.globalAlpha = 0.9;
    context.fillRect(-6, -6, width + 12, height + 12);
    context.globalAlpha = 1;
    context.beginPath();
    context.rect(-6, -6, width + 12, height + 12);
    context.clip();
    context.scale(scale, scale);
    context.translate(-left, -top);
    context.fillStyle = this.palette.colour('rest');
    context.fillRect(0, 0, this.size.width, this.size.height);
    this.drawPath(context, view, scale);
    this.drawShown(context, view, scale);
    context.restore();
  }

  /** The part of the document that the window shows. */
  drawShown(context, view, scale) {
    const least = 5 / scale;
    context.strokeStyle = this.palette.colour('push');
    context.lineWidth = 2.5 / scale;
    context.strokeRect(
        -view.x / view.zoom, -view.y / view.zoom, Math.max(least, WINDOW.width / view.zoom),
        Math.max(least, WINDOW.height / view.zoom));
  }

  /** The way of the window's middle over the document. */
  drawPath(context, view, scale) {
    const step = Math.max(1, Math.ceil((view.index + 1) / MOST_PATH_POINTS));
    context.strokeStyle = this.palette.colour('slide');
    context.lineWidth = 2 / scale;
    context.beginPath();
    context.moveTo(WINDOW.width / 2, WINDOW.height / 2);
    for (let i = 0; i <= view.index; i += step) {
      const {x, y} = middleAt(this.play, i);
      context.lineTo(x, y);
    }
    context.stroke();
  }
}

/** Mountains, a lake and trees, in the document's size. */
function drawScene(context, {width, height}) {
  const sky = context.createLinearGradient(0, 0, 0, height * 0.6);
  SCENE.sky.forEach((colour, i) => sky.addColorStop(i, colour));
  context.fillStyle = sky;
  context.fillRect(0, 0, width, height);
  fillCircle(context, SCENE.sun, width * 0.78, height * 0.2, height * 0.08);
  fillShape(
      context, SCENE.far, width, height,
      [[0, 0.55], [0.15, 0.3], [0.27, 0.47], [0.42, 0.22], [0.6, 0.5], [0.75, 0.34], [1, 0.55]]);
  fillShape(
      context, SCENE.near, width, height,
      [[0, 0.5], [0.2, 0.58], [0.38, 0.45], [0.55, 0.6], [0.8, 0.48], [1, 0.58]]);
  fillShape(context, SCENE.lake, width, height, [[0, 0.62], [1, 0.62]]);
  fillShape(
      context, SCENE.meadow, width, height,
      [[0, 0.7], [0.25, 0.76], [0.5, 0.71], [0.78, 0.82], [1, 0.76]]);
  for (let i = 0; i < 14; ++i) {
    const x = width * (0.04 + ((i * 0.381) % 0.92));
    const y = height * (0.84 + ((i * 0.237) % 0.13));
    drawTree(context, x, y, height * 0.05);
  }
}

function fillShape(context, colour, width, height, points) {
  context.fillStyle = colour;
  context.beginPath();
  context.moveTo(0, height);
  for (const [x, y] of points) context.lineTo(x * width, y * height);
  context.lineTo(width, height);
  context.fill();
}

function fillCircle(context, colour, x, y, radius) {
  context.fillStyle = colour;
  context.beginPath();
  context.arc(x, y, radius, 0, 2 * Math.PI);
  context.fill();
}

function drawTree(context, x, y, size) {
  context.fillStyle = SCENE.trunk;
  context.fillRect(x - size * 0.07, y - size * 0.3, size * 0.14, size * 0.5);
  context.fillStyle = SCENE.tree;
  context.beginPath();
  context.moveTo(x, y - size);
  context.lineTo(x + size * 0.4, y - size * 0.2);
  context.lineTo(x - size * 0.4, y - size * 0.2);
  context.fill();
}

/** Lines that show at every zoom how far things are. */
function drawGrid(context, view, colour) {
  const step = 10 ** Math.ceil(Math.log10(60 / view.zoom));
  const from = {x: -view.x / view.zoom, y: -view.y / view.zoom};
  const to = {x: from.x + WINDOW.width / view.zoom, y: from.y + WINDOW.height / view.zoom};
  context.strokeStyle = colour;
  context.fillStyle = colour;
  context.lineWidth = 1 / view.zoom;
  context.font = `${14 / view.zoom}px sans-serif`;
  context.beginPath();
  for (let x = Math.floor(from.x / step) * step; x <= to.x; x += step) {
    context.moveTo(x, from.y);
    context.lineTo(x, to.y);
    context.fillText(String(Number(x.toPrecision(6))), x + 4 / view.zoom, from.y + 16 / view.zoom);
  }
  for (let y = Math.floor(from.y / step) * step; y <= to.y; y += step) {
    context.moveTo(from.x, y);
    context.lineTo(to.x, y);
  }
  context.stroke();
}
