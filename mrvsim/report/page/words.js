// Says in words what happened, in the terms of docs/lifecycle.md.
import {causeOf, CLICKS, countsOf, effectsOf, lastAt, tickMotion} from './data.js';
import {counted, numberText, timeText} from './scales.js';

/**
 * What became of samples, by `Samples.fate`; the numbers are those of mrvsim/report/Fates.h.
 * @type {{name: string, colour: string, words: string}[]}
 */
export const FATES = [
  {
    name: 'at rest',
    colour: 'rest',
    words: 'Six zeros: the cap was at rest, or the host was in the background.'
  },
  {name: 'acted on', colour: 'acted', words: 'It was acted on.'},
  {
    name: 'gathered',
    colour: 'gathered',
    words: 'It was added to the sum, which stayed below the threshold.'
  },
  {name: 'too small', colour: 'small', words: 'It was too small to count.'},
  {
    name: 'dropped: wait',
    colour: 'waited',
    words: 'It was dropped: the plug-in waited for the host’s redraw after a tick.'
  },
  {
    name: 'dropped: redraw pending',
    colour: 'pending',
    words: 'It was dropped: the host’s window waited to be redrawn.'
  },
  {
    name: 'no effect',
    colour: 'nothing',
    words: 'It was enough and nothing came: no main window, a redraw that the log does not show, ' +
        'or a tool without a brush.'
  },
  {
    name: 'refused by the host',
    colour: 'bad',
    words: 'The host refused to say the tool or the size of its brush.'
  },
];

export const MOTION_WORDS = ['at rest', 'twist', 'push or pull', 'slide'];
const MOTION_EFFECTS = ['nothing', 'brush', 'zoom', 'pan'];
const MODIFIERS =
    [[0x20000, 'shift'], [0x40000, 'control'], [0x80000, 'option'], [0x100000, 'command']];
const KEY_NAMES = {
  55: 'command',
  56: 'shift',
  58: 'option',
  59: 'control'
};

/**
 * A line of the log: the table of a play that it is in, and its index there.
 * @typedef {{table: 'samples' | 'ticks' | 'keys' | 'clicks' | 'views' | 'notes', index: number}}
 * Item
 */
/**
 * @typedef {{stage: number, name: string, text: string}} Stage  numbered as in docs/lifecycle.md
 */
/** @typedef {{title: string, text: string, road: Stage[], level: number}} Description */

/** @param {Item} item @returns {Description} */
export function describe(play, item) {
  const table = play[item.table];
  const cause = item.table === 'samples' ?
      item.index :
      causeOf(play, table.line[item.index], table.time[item.index]);
  return {
    title: `${timeText(table.time[item.index])} · ${kindOf(play, item)}`,
    text: wordsOf(play, item),
    road: cause >= 0 && item.table !== 'notes' ? roadOf(play, cause) : [],
    level: item.table === 'notes' ? noteOf(play, item.index).level : 0,
  };
}

export function noteOf(play, index) {
  const [kind, words, level] = play.texts[play.notes.text[index]];
  return {kind, words, level};
}

/** What kind of thing it is. @param {Item} item */
export function kindOf(play, {table, index}) {
  switch (table) {
    case 'samples':
      return `sample, ${MOTION_WORDS[play.samples.kind[index]]}`;
    case 'ticks':
      return tickMotion(play.ticks, index).isZoom ? 'zoom tick' : 'pan tick';
    case 'keys':
      return play.keys.brush[index] ? 'brush key' : 'modifier key';
    case 'clicks':
      return 'click';
    case 'views':
      return 'the host’s view';
    default:
      return noteOf(play, index).kind;
  }
}

/** A sentence about it. @param {Item} item */
export function wordsOf(play, {table, index}) {
  switch (table) {
    case 'samples':
      return sampleWords(play, index);
    case 'ticks':
      return tickWords(play.ticks, index);
    case 'keys':
      return keyWords(play, index);
    case 'clicks':
      return clickWords(play.clicks, index);
    case 'views':
      return viewWords(play.views, index);
    default:
      return noteWords(noteOf(play, index));
  }
}

function sampleWords(play, index) {
  const values = play.samples.axes.map((axis) => numberText(axis[index]));
  return `Moved ${values.slice(0, 3).join(', ')}, turned ${values.slice(3).join(', ')}. ` +
      FATES[play.samples.fate[index]].words;
}

function tickWords(ticks, i) {
  const {isZoom, sideways, way} = tickMotion(ticks, i);
  const what = isZoom ? `Zoom ${way > 0 ? 'in' : 'out'}` :
                        `Pan ${
                            sideways    ? (way > 0 ? 'right' : 'left') :
                                way > 0 ? 'down' :
                                          'up'} by 8 pixels`;
  const held = MODIFIERS.filter(([bit]) => (ticks.flags[i] & bit) !== 0).map(([, name]) => name);
  const withKeys = held.length > 0 ? ` with ${held.join(' and ')} held` : '';
  return `${what}${withKeys}, at (${numberText(ticks.x[i])}, ${numberText(ticks.y[i])}).`;
}

function keyWords(play, i) {
  const {keys, samples} = play;
  const way = keys.down[i] ? 'down' : 'up';
  if (!keys.brush[i])
    return `The ${KEY_NAMES[keys.code[i]] ?? `key ${keys.code[i]}`} key went ${way}.`;
  const cause = causeOf(play, keys.line[i], keys.time[i]);
  const size = cause < 0         ? '' :
      samples.axes[4][cause] > 0 ? ' for a larger brush' :
                                   ' for a smaller brush';
  return `Key ${keys.code[i]}${size} went ${way}.`;
}

function clickWords(clicks, i) {
  const fate = clicks.passed[i] ? 'reached the host' : 'was held back from the host during a pan';
  return `A real mouse event (${CLICKS[clicks.kind[i]]}) ${fate}.`;
}

function viewWords(views, i) {
  const brush =
      Number.isNaN(views.brush[i]) ? 'no brush' : `brush ${numberText(views.brush[i])} px`;
  return `Zoom ${zoomText(views.zoom[i])}, the document’s corner at ` +
      `(${numberText(views.x[i])}, ${numberText(views.y[i])}), ${brush}.`;
}

export function zoomText(zoom) { return `${numberText(zoom * 100)} %`; }

function noteWords({kind, words, level}) {
  if (level === 2) return `Misuse: ${words}.`;
  const fault = level === 1 ? ' A fault that the scenario asks for looks like this.' : '';
  return `${kind}: ${words}.${fault}`;
}

/** The stages that a sample took. @returns {Stage[]} */
function roadOf(play, sample) {
  const {samples} = play;
  const kind = samples.kind[sample];
  const stages = [
    {stage: 4, name: 'Device thread', text: 'The framework called the plug-in with a message.'},
    {stage: 5, name: 'Axes copied', text: axesText(samples, sample)},
    {
      stage: 6,
      name: 'Main queue',
      text: `Posted with high priority; line ${samples.line[sample]} of the log.`
    },
    {stage: 7, name: 'Dispatch', text: dispatchText(samples, sample)},
  ];
  if (kind !== 1) stages.push({stage: 8, name: 'Redraw wait', text: waitText(play, sample)});
  const sum = sumText(samples, sample);
  if (sum) stages.push({stage: 9, name: 'Accumulator', text: sum});
  return [...stages, ...effectStages(play, sample)];
}

function axesText({axes}, i) {
  const isZero = axes.every((axis) => axis[i] === 0);
  return isZero ? 'Six zeros: at rest, or the host in the background.' :
                  `Push ${numberText(axes[1][i])}, slide ${numberText(axes[0][i])} and ${
                      numberText(axes[2][i])}, ` +
          `twist ${numberText(axes[4][i])}.`;
}

function dispatchText({kind}, i) {
  return kind[i] === 0 ?
      'Nothing moved: it counts as the end of a pan.' :
      `The ${MOTION_WORDS[kind[i]]} was the largest: ${MOTION_EFFECTS[kind[i]]}.`;
}

function waitText({samples, redrawDelay}, i) {
  const delay = redrawDelay === null ? '' : ` The host seems to redraw after ${redrawDelay} ms.`;
  if (samples.fate[i] === 4 || (samples.kind[i] === 0 && samples.wait[i] > 1)) {
    return `Dropped; the counter stands at ${samples.wait[i]} of 51.${delay}`;
  }
  return samples.fate[i] === 5 ? `Dropped; the window had to be redrawn first.${delay}` : 'Passed.';
}

function sumText({fate, kind}, i) {
  const threshold = ['', '501 counts', '11 counts', '6 pixels'][kind[i]];
  switch (fate[i]) {
    case 1:
      return `The sum reached ${threshold} and started again.`;
    case 2:
      return `Added; the sum stayed below ${threshold}.`;
    case 3:
      return kind[i] === 1 ? 'Less than 20 counts are not added.' : 'It rounds to no step.';
    case 6:
      return `It would have reached ${threshold}.`;
    default:
      return '';
  }
}

/** What the plug-in posted, and how the host reacted. @returns {Stage[]} */
function effectStages(play, sample) {
  const stages = [];
  for (const i of effectsOf(play, play.ticks, sample)) {
    stages.push({stage: 10, name: 'Tick', text: tickWords(play.ticks, i)});
  }
  for (const i of effectsOf(play, play.keys, sample)) {
    if (play.keys.brush[i] && play.keys.down[i]) {
      stages.push({stage: 10, name: 'Brush key', text: keyWords(play, i)});
    }
  }
  for (const i of effectsOf(play, play.views, sample)) {
    stages.push({stage: 11, name: 'The host', text: viewWords(play.views, i)});
  }
  return stages;
}

/** What the whole play came to. */
export function verdictOf(play) {
  const counts = countsOf(play);
  const {samples} = play;
  const parts =
      [
        [counts.zoomTicks, 'zoom tick'], [counts.panTicks, 'pan tick'],
        [counts.brushKeys, 'brush key']
      ].filter(([count]) => count > 0)
          .map(([count, noun]) => counted(count, noun));
  const wrong = `${counts.misuses ? counted(counts.misuses, 'misuse') : 'nothing leaked'}, ` +
      `${counts.keysLeftDown ? counted(counts.keysLeftDown, 'key') : 'no key'} left down`;
  if (samples.size === 0) return `No motion reached the plug-in; ${wrong}.`;
  return `${motionTime(samples)} of motion: ${parts.join(', ') || 'nothing came of it'}; ${wrong}.`;
}

/** How long samples came, as the summary of mrvsim says it. */
function motionTime({time, size}) {
  const length = time[size - 1] - time[0];
  if (length === 0) return 'A moment';
  return `${length < 10000 ? length / 1000 : Math.round(length / 1000)} s`;
}

/** What the document showed at a time, in words. */
export function shownWords(play, time) {
  const view = lastAt(play.views, time);
  return view < 0 ? 'The host has not reacted yet.' : viewWords(play.views, view);
}
