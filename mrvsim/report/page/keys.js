// The keys of the page, and the list of them.

/** @typedef {{keys: string[], shown: string, does: string, act: () => void}} Binding */

/** @param {Binding[]} bindings */
export function listenForKeys(bindings) {
  const byKey = new Map(bindings.flatMap((binding) => binding.keys.map((key) => [key, binding])));
  document.addEventListener('keydown', (event) => {
    const isTyping =
        event.target instanceof HTMLElement && event.target.closest('select, input, dialog');
    const isPressing = event.key === ' ' && event.target instanceof HTMLButtonElement;
    const hasModifier = event.ctrlKey || event.metaKey || event.altKey;
    const binding = byKey.get(event.key);
    if (!binding || isTyping || isPressing || hasModifier) return;
    event.preventDefault();
    binding.act();
  });
}

/** Fills the list under "?". @param {Binding[]} bindings */
export function listKeys(bindings) {
  const entries = bindings.flatMap(({shown, does}) => {
    const key = document.createElement('dt');
    const text = document.createElement('dd');
    key.textContent = shown;
    text.textContent = does;
    return [key, text];
  });
  document.getElementById('key-list').replaceChildren(...entries);
}
