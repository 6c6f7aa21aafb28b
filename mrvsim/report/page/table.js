// Everything as a table, for readers who cannot see pictures.
import {problemsOf} from './data.js';
import {timeText} from './scales.js';
import {kindOf, noteOf, wordsOf} from './words.js';

const ROWS = 100;
const TABLES = ['samples', 'ticks', 'keys', 'clicks', 'views', 'notes'];

/** All lines of some tables in the log's order. @returns {Item[]} */
function itemsOf(play, tables) {
  const items = [];
  for (const table of tables) {
    for (let index = 0; index < play[table].size; ++index) items.push({table, index});
  }
  const line = ({table, index}) => play[table].line[index];
  return items.sort((a, b) => line(a) - line(b));
}

const CHOICES = {
  events: (play) => itemsOf(play, TABLES.slice(1)),
  all: (play) => itemsOf(play, TABLES),
  problems: (play) => problemsOf(play).map((index) => ({table: 'notes', index})),
};

export class LogTable {
  /** @param {(item: object) => void} look called for the row that was chosen */
  constructor(look) {
    this.look = look;
    this.byId = (id) => document.getElementById(id);
    this.byId('rows-choice').addEventListener('change', () => this.fill());
    this.byId('rows-before').addEventListener('click', () => this.turn(-ROWS));
    this.byId('rows-after').addEventListener('click', () => this.turn(ROWS));
  }

  setPlay(play) {
    this.play = play;
    this.items = null;
    if (!this.byId('table').hidden) this.fill();
  }

  /** Shows or hides the table. */
  toggle(time) {
    const section = this.byId('table');
    section.hidden = !section.hidden;
    this.byId('table-toggle').setAttribute('aria-expanded', String(!section.hidden));
    if (section.hidden) return;
    this.fill();
    this.showAt(time);
    section.scrollIntoView({block: 'start'});
  }

  fill() {
    this.items = CHOICES[this.byId('rows-choice').value](this.play);
    this.first = 0;
    this.show();
  }

  /** Begins with the page that holds a time. */
  showAt(time) {
    const index = this.items.findIndex(({table, index: i}) => this.play[table].time[i] >= time);
    this.first = Math.max(0, Math.floor((index < 0 ? 0 : index) / ROWS) * ROWS);
    this.show();
  }

  turn(by) {
    this.first = Math.max(0, Math.min(this.first + by, this.items.length - 1));
    this.show();
  }

  show() {
    const end = Math.min(this.first + ROWS, this.items.length);
    this.byId('rows').replaceChildren(
        ...this.items.slice(this.first, end).map((item) => this.row(item)));
    this.byId('rows-shown').textContent =
        this.items.length === 0 ? 'nothing' : `${this.first + 1} to ${end} of ${this.items.length}`;
    this.byId('rows-before').disabled = this.first === 0;
    this.byId('rows-after').disabled = end === this.items.length;
  }

  row(item) {
    const table = this.play[item.table];
    const row = document.createElement('tr');
    const level = item.table === 'notes' ? noteOf(this.play, item.index).level : 0;
    row.className = ['', 'failed', 'misuse'][level];
    const go = document.createElement('button');
    go.type = 'button';
    go.textContent = timeText(table.time[item.index]);
    const cells =
        [String(table.line[item.index]), go, kindOf(this.play, item), wordsOf(this.play, item)];
    for (const content of cells) row.insertCell().append(content);
    row.addEventListener('click', () => this.look(item));
    return row;
  }
}
