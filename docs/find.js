// SPDX-License-Identifier: MIT
// The reference's search: words inside names, numbers and texts, from the unpacked files alone. The index
// (find-index.js, made by index.awk) is a list of [title, address, text].
'use strict';

// The entries that have all words, best first: a word counts most in a title that it is, less where it begins a part of a
// title, and least in a text.
function findEntries(index, query) {
  const words = query.toLowerCase().split(/[\s_]+/).filter((word) => word);
  if (!words.length) return [];
  const found = [];
  for (const entry of index) {
    const title = entry[0].toLowerCase();
    const text = entry[2].toLowerCase();
    const parts = title.split(/[^a-z0-9]+/);
    let score = 0;
    for (const word of words) {
      if (parts.includes(word)) score += 100;
      else if (parts.some((part) => part.startsWith(word))) score += 40;
      else if (title.includes(word)) score += 20;
      else if (text.split(/[^a-z0-9]+/).includes(word)) score += 5;
      else if (text.includes(word)) score += 1;
      else {
        score = 0;
        break;
      }
    }
    // Of equals the shorter title is nearer to what was typed.
    if (score) found.push([score - title.length / 1000, entry]);
  }
  return found.sort((a, b) => b[0] - a[0]).map((pair) => pair[1]);
}

// The piece of a text around the first word that is in it.
function findExcerpt(text, query) {
  const at = query.toLowerCase().split(/[\s_]+/).filter((word) => word)
    .map((word) => text.toLowerCase().indexOf(word)).filter((place) => place >= 0).sort((a, b) => a - b)[0] || 0;
  const from = at < 60 ? 0 : text.lastIndexOf(' ', at - 40) + 1;
  return (from ? '… ' : '') + text.slice(from, from + 150) + (from + 150 < text.length ? ' …' : '');
}

if (typeof document !== 'undefined') {
  const form = document.getElementById('find');
  const input = document.getElementById('find-words');
  const list = document.getElementById('find-results');
  const show = () => {
    const entries = findEntries(findIndex, input.value);
    list.replaceChildren(...entries.slice(0, 30).map((entry) => {
      const item = document.createElement('li');
      const link = item.appendChild(document.createElement('a'));
      link.href = entry[1];
      link.textContent = entry[0];
      item.appendChild(document.createElement('p')).textContent = findExcerpt(entry[2], input.value);
      return item;
    }));
    if (input.value.trim() && !entries.length) {
      list.appendChild(document.createElement('li')).textContent = 'Nothing has all these words.';
    }
    list.hidden = !input.value.trim();
  };
  input.addEventListener('input', show);
  input.addEventListener('focus', show);
  form.addEventListener('submit', (event) => {
    event.preventDefault();
    const first = list.querySelector('a');
    if (first) location.href = first.href;
  });
  document.addEventListener('keydown', (event) => {
    if (event.key === 'Escape') list.hidden = true;
    if (event.key === '/' && document.activeElement !== input) {
      event.preventDefault();
      input.focus();
    }
  });
  document.addEventListener('click', (event) => {
    if (!form.contains(event.target)) list.hidden = true;
  });
  // A page that is opened with words behind "?" shows what they find.
  const asked = new URLSearchParams(location.search).get('find');
  if (asked) {
    input.value = asked;
    show();
  }
}
if (typeof module !== 'undefined') module.exports = { findEntries, findExcerpt };
