// Puts the page together: one state, and what is drawn from it.
import {Chart, clampSpan, Palette} from './chart.js';
import {countsOf, lastAt, lowerBound, problemsOf, readPlays} from './data.js';
import {listenForKeys, listKeys} from './keys.js';
import {lanesOf, legendOf} from './lanes.js';
import {Picture} from './picture.js';
import {timeText} from './scales.js';
import {LogTable} from './table.js';
import {describe, noteOf, shownWords, verdictOf} from './words.js';

const MOST_PROBLEMS = 500;
const SHOWN_AROUND = 1000;

const byId = (id) => document.getElementById(id);
const plays = readPlays(byId('data').textContent);
const palette = new Palette();
const chart = new Chart(byId('chart'), palette, {show: setState, look, hover});
const picture = new Picture(byId('picture'), palette);
const table = new LogTable((item) => lookAt(item));

/**
 * What is shown. `item` is the line of the log that was chosen, `hovered` the one under the
 * pointer.
 */
const state = {
  play: plays[0] ?? null,
  from: 0,
  to: 1,
  cursor: 0,
  hover: null,
  item: null,
  hovered: null,
  isRunning: false,
  speed: 1
};
let isDrawDue = false;

function setState(changes) {
  Object.assign(state, changes);
  if (isDrawDue) return;
  isDrawDue = true;
  requestAnimationFrame(draw);
}

function choosePlay(play) {
  const isReady = play.samples.size > 0;
  chart.setPlay(play, lanesOf(play));
  picture.setPlay(play);
  table.setPlay(play);
  showHeader(play);
  showProblems(play);
  byId('scrub').max = String(play.end);
  setState({
    play,
    from: 0,
    to: play.end,
    cursor: 0,
    hover: null,
    hovered: null,
    isRunning: false,
    item: isReady ? {table: 'samples', index: 0} : firstNote(play)
  });
}

function firstNote(play) { return play.notes.size > 0 ? {table: 'notes', index: 0} : null; }

function draw() {
  isDrawDue = false;
  const {play, cursor, from, to} = state;
  chart.draw(state);
  picture.draw(cursor);
  byId('span').textContent =
      [from, to].map((time) => timeText(time, to - from, to >= 60000)).join(' to ');
  byId('now').textContent = timeText(cursor);
  byId('scrub').value = String(cursor);
  byId('run').textContent = state.isRunning ? 'Pause' : 'Play';
  byId('shown').textContent = shownWords(play, cursor);
  showEvent(state.hovered ?? state.item);
}

function showEvent(item) {
  if (item === null) return;
  const {title, text, road} = describe(state.play, item);
  byId('event-title').textContent = title;
  byId('event-text').textContent = text;
  byId('road').replaceChildren(...road.map(({stage, name, text: words}) => {
    const entry = document.createElement('li');
    entry.value = stage;
    const heading = document.createElement('b');
    heading.textContent = `${name}. `;
    entry.append(heading, words);
    return entry;
  }));
}

function showHeader(play) {
  const counts = countsOf(play);
  byId('verdict').textContent = verdictOf(play);
  const shown = [
    ['samples', counts.samples],
    ['zoom ticks', counts.zoomTicks],
    ['pan ticks', counts.panTicks],
    ['brush keys', counts.brushKeys],
    ['dropped *', counts.dropped],
    ['clicks held back', `${counts.clicksHeldBack} of ${counts.clicks}`],
    ['failed calls', counts.failures],
    ['misuses', counts.misuses],
  ];
  byId('counts').replaceChildren(...shown.map(([name, value]) => {
    const entry = document.createElement('div');
    entry.className = name === 'misuses' && value > 0 ? 'bad' : '';
    const term = document.createElement('dt');
    const text = document.createElement('dd');
    term.textContent = name;
    text.textContent = String(value);
    entry.append(term, text);
    return entry;
  }));
}

function showProblems(play) {
  const problems = problemsOf(play);
  byId('next-problem').disabled = problems.length === 0;
  byId('problems-title').textContent = `Problems (${problems.length})`;
  const entries = problems.slice(0, MOST_PROBLEMS).map((index) => {
    const {kind, words, level} = noteOf(play, index);
    const button = document.createElement('button');
    button.type = 'button';
    button.className = level === 2 ? 'misuse' : '';
    button.textContent = `${timeText(play.notes.time[index])} · ${kind}: ${words}`;
    button.addEventListener('click', () => lookAt({table: 'notes', index}));
    const entry = document.createElement('li');
    entry.append(button);
    return entry;
  });
  if (entries.length < problems.length) entries.push(remark('The table has the others.'));
  if (entries.length === 0) entries.push(remark('No call failed, and nothing was misused.'));
  byId('problems').replaceChildren(...entries);
}

function remark(text) {
  const entry = document.createElement('li');
  entry.className = 'none';
  entry.textContent = text;
  return entry;
}

function showLegend() {
  byId('legend').replaceChildren(...legendOf().flatMap(({title, entries}) => {
    const heading = document.createElement('li');
    const name = document.createElement('b');
    name.textContent = title;
    heading.append(name);
    return [
      heading, ...entries.map(({colour, name: text}) => {
        const entry = document.createElement('li');
        const patch = document.createElement('i');
        patch.style.background = `var(--${colour})`;
        entry.append(patch, text);
        return entry;
      })
    ];
  }));
}

function look(time, item) { setState({cursor: time, item, hovered: null}); }

function hover(item, time) { setState({hovered: item, hover: time}); }

/** Goes to a line of the log and shows the time around it. */
function lookAt(item) {
  const time = state.play[item.table].time[item.index];
  const isShown = time >= state.from && time <= state.to;
  const span = isShown ? {} : clampSpan(time - SHOWN_AROUND, time + SHOWN_AROUND, state.play.end);
  setState({...span, cursor: time, item, hovered: null});
}

/** Moves the cursor, and what is shown if the cursor would leave it. */
function moveTo(time) {
  const cursor = Math.min(Math.max(time, 0), state.play.end);
  const length = state.to - state.from;
  const isOut = cursor < state.from || cursor > state.to;
  const span = isOut ? clampSpan(cursor - length * 0.1, cursor + length * 0.9, state.play.end) : {};
  const sample = lastAt(state.play.samples, cursor);
  const item = sample < 0 ? state.item : {table: 'samples', index: sample};
  setState({...span, cursor, item, hovered: null});
}

function stepTick(way) {
  const {ticks} = state.play;
  const index =
      way > 0 ? lastAt(ticks, state.cursor) + 1 : lowerBound(ticks.time, state.cursor) - 1;
  if (index >= 0 && index < ticks.size) lookAt({table: 'ticks', index});
}

function stepSample(way) {
  const {samples} = state.play;
  const index =
      way > 0 ? lastAt(samples, state.cursor) + 1 : lowerBound(samples.time, state.cursor) - 1;
  if (index >= 0 && index < samples.size) moveTo(samples.time[index]);
}

/** Goes to the problem after the one that was chosen, or after the cursor; then to the first. */
function stepProblem(way) {
  const problems = problemsOf(state.play);
  if (problems.length === 0) return;
  const {notes} = state.play;
  const chosen = state.item?.table === 'notes' ? problems.indexOf(state.item.index) : -1;
  const after = problems.findIndex((index) => notes.time[index] >= state.cursor);
  const next = chosen >= 0 ? chosen + way : after < 0 ? 0 : after;
  lookAt({table: 'notes', index: problems[(next + problems.length) % problems.length]});
}

function zoomBy(factor) {
  const {from, to, cursor, play} = state;
  const middle = cursor >= from && cursor <= to ? cursor : (from + to) / 2;
  setState(clampSpan(middle - (middle - from) * factor, middle + (to - middle) * factor, play.end));
}

function panBy(share) {
  const move = (state.to - state.from) * share;
  setState(clampSpan(state.from + move, state.to + move, state.play.end));
}

function showWhole() { setState({from: 0, to: state.play.end}); }

/** Plays in the time of the clock. */
function run() {
  const isAtEnd = state.cursor >= state.play.end;
  setState({isRunning: !state.isRunning, cursor: isAtEnd ? 0 : state.cursor});
  let last = performance.now();
  const frame = (now) => {
    if (!state.isRunning) return;
    moveTo(state.cursor + (now - last) * state.speed);
    last = now;
    if (state.cursor >= state.play.end) setState({isRunning: false});
    requestAnimationFrame(frame);
  };
  if (state.isRunning) requestAnimationFrame(frame);
}

function changeSpeed(way) {
  const choice = byId('speed');
  choice.selectedIndex =
      Math.min(Math.max(choice.selectedIndex + way, 0), choice.options.length - 1);
  setState({speed: Number(choice.value)});
}

/** @type {import('./keys.js').Binding[]} */
const BINDINGS = [
  {keys: [' '], shown: 'space', does: 'play or pause', act: run},
  {keys: ['.'], shown: '.', does: 'next tick', act: () => stepTick(1)},
  {keys: [','], shown: ',', does: 'tick before', act: () => stepTick(-1)},
  {keys: ['ArrowRight'], shown: '→', does: 'next sample', act: () => stepSample(1)},
  {keys: ['ArrowLeft'], shown: '←', does: 'sample before', act: () => stepSample(-1)},
  {keys: ['+', '='], shown: '+', does: 'show less time', act: () => zoomBy(0.5)},
  {keys: ['-'], shown: '−', does: 'show more time', act: () => zoomBy(2)},
  {keys: ['0'], shown: '0', does: 'show the whole time', act: showWhole},
  {keys: ['PageDown', 'd'], shown: 'd', does: 'move to later', act: () => panBy(0.5)},
  {keys: ['PageUp', 'a'], shown: 'a', does: 'move to earlier', act: () => panBy(-0.5)},
  {keys: ['Home'], shown: 'Home', does: 'go to the beginning', act: () => moveTo(0)},
  {keys: ['End'], shown: 'End', does: 'go to the end', act: () => moveTo(state.play.end)},
  {keys: ['m'], shown: 'm', does: 'next problem', act: () => stepProblem(1)},
  {keys: ['M'], shown: 'M', does: 'problem before', act: () => stepProblem(-1)},
  {keys: ['['], shown: '[', does: 'slower', act: () => changeSpeed(-1)},
  {keys: [']'], shown: ']', does: 'faster', act: () => changeSpeed(1)},
  {keys: ['t'], shown: 't', does: 'show or hide the table', act: () => table.toggle(state.cursor)},
  {keys: ['?'], shown: '?', does: 'show these keys', act: () => byId('help').showModal()},
];

function listen() {
  const clicked = {
    whole: showWhole,
    narrower: () => zoomBy(0.5),
    wider: () => zoomBy(2),
    run,
    'tick-before': () => stepTick(-1),
    'tick-after': () => stepTick(1),
    'next-problem': () => stepProblem(1),
    'help-open': () => byId('help').showModal(),
    'table-toggle': () => table.toggle(state.cursor),
  };
  for (const [id, act] of Object.entries(clicked)) byId(id).addEventListener('click', act);
  byId('scrub').addEventListener('input', (event) => moveTo(Number(event.target.value)));
  byId('speed').addEventListener(
      'change', (event) => setState({speed: Number(event.target.value)}));
  byId('play-choice')
      .addEventListener('change', (event) => choosePlay(plays[Number(event.target.value)]));
  new ResizeObserver(() => setState({})).observe(document.body);
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
    palette.forget();
    setState({});
  });
  listenForKeys(BINDINGS);
  listKeys(BINDINGS);
}

function offerPlays() {
  byId('plays').hidden = plays.length < 2;
  byId('play-choice')
      .replaceChildren(
          ...plays.map((_, i) => new Option(`${i + 1} of ${plays.length}`, String(i))));
}

if (plays.length === 0) {
  byId('verdict').textContent = 'The log is empty: the plug-in did nothing.';
  document.querySelector('main').hidden = true;
} else {
  offerPlays();
  showLegend();
  listen();
  choosePlay(plays[0]);
}

/** The page's data and state, for programs that read the page. */
globalThis.report = {
  plays,
  state,
  countsOf
};
