// From values to places on the screen, and to text.

/** The time that is shown, and where. */
export class TimeScale {
  constructor(from, to, left, width) { Object.assign(this, {from, to, left, width}); }
  x(time) { return this.left + ((time - this.from) / (this.to - this.from)) * this.width; }
  time(x) { return this.from + ((x - this.left) / this.width) * (this.to - this.from); }
  /** Milliseconds of a pixel. */
  get pixel() { return (this.to - this.from) / this.width; }
}

/** @returns {(value: number) => number} from 0 at the lower end to 1 at the upper one */
function linear(low, high) {
  const size = high - low || 1;
  return (value) => (value - low) / size;
}

/** Equal ratios rise alike. @returns {(value: number) => number} */
export function logarithmic(low, high) {
  const size = Math.log(high / low) || 1;
  return (value) => Math.log(value / low) / size;
}

/** Logarithmic far from zero, and linear up to a hundred. @returns {(value: number) => number} */
export function signedLogarithmic(low, high) {
  const fold = (value) => Math.asinh(value / 100);
  const share = linear(fold(low), fold(high));
  return (value) => share(fold(value));
}

/** @typedef {{from: number, to: number}} Span  milliseconds */

/** Round times at most `most` in number. @returns {number[]} */
export function roundTimes(from, to, most) {
  const steps = [
    1,   2,   5,    10,  20,  50,   100, 200, 500, 1e3,  2e3,
    5e3, 1e4, 15e3, 3e4, 6e4, 12e4, 3e5, 6e5, 9e5, 18e5, 36e5
  ];
  const step =
      steps.find((s) => (to - from) / s <= most) ?? Math.ceil((to - from) / most / 36e5) * 36e5;
  const times = [];
  for (let time = Math.ceil(from / step) * step; time <= to; time += step) times.push(time);
  return times;
}

const MINUTE = 60000;

/**
 * "12.5 s", "1:02:03.004": as many decimals as the step between times needs.
 * @param {boolean} inMinutes also a time of less than a minute, to go with others
 */
export function timeText(time, step = 1, inMinutes = false) {
  const decimals = step >= 1000 ? 0 : step >= 100 ? 1 : step >= 10 ? 2 : 3;
  const seconds = Number((time / 1000).toFixed(decimals));
  if (time < MINUTE && !inMinutes) return `${seconds.toFixed(decimals)} s`;
  const hours = Math.floor(seconds / 3600);
  const minutes = Math.floor(seconds / 60) % 60;
  const rest = (seconds % 60).toFixed(decimals).padStart(decimals > 0 ? decimals + 3 : 2, '0');
  return hours > 0 ? `${hours}:${String(minutes).padStart(2, '0')}:${rest}` : `${minutes}:${rest}`;
}

/** Four significant digits at most, without needless zeros. */
export function numberText(value) {
  const rounded = Math.abs(value) >= 1000 ? Math.round(value) : Number(value.toPrecision(4));
  return String(rounded).replace('-', '−');
}

/** "1 tick", "2 ticks". */
export function counted(count, noun) { return `${count} ${noun}${count === 1 ? '' : 's'}`; }
