'use strict';
// Search, sort and filter. Without this script all is there, unsorted. What is in a noscript is
// text here: it becomes elements when it is needed, so that a large page opens at once.

const make = (name, properties, ...children) => {
  const element = Object.assign(document.createElement(name), properties);
  element.append(...children);
  return element;
};
// The text of markup, in lower case: of the page's own, where < and > are always escaped.
const characters = {'&lt;': '<', '&gt;': '>', '&quot;': '"', '&amp;': '&'};
const plain = (markup) => /[<&]/.test(markup) ?
  markup.replace(/<wbr>/g, '').replace(/<[^>]*>/g, ' ').replace(/&\w+;/g, (name) => characters[name]).replace(/\s+/g, ' ').trim() : markup;
const wordsOf = (text) => text.toLowerCase().split(/\s+/).filter(Boolean);
// A number is also found as it is written the other way: 0x4A as 74.
const others = new Map();
const otherOf = (word) => {
  if (!others.has(word)) {
    const number = /^(0x[\da-f]+|\d+)$/.test(word) && Number(word);
    const digits = number === false ? '' : word.startsWith('0x') ? String(number) : '0x0*' + number.toString(16);
    others.set(word, digits ? new RegExp(`(?<![\\w.])${digits}(?![\\w.])`) : null);
  }
  return others.get(word);
};
const has = (text, word) => text.includes(word) || Boolean(otherOf(word)?.test(text));
const hasAll = (text, words) => words.every((word) => has(text, word));
const later = (run, delay) => {
  let timer = 0;
  return () => { clearTimeout(timer); timer = setTimeout(run, delay); };
};

// What begins closed.

const fill = (details) => {
  const hidden = details.querySelector(':scope > noscript, :scope > ul > li > noscript');
  if (hidden) hidden.outerHTML = hidden.textContent;
};
const reveal = () => {
  const match = /^#t(\d+)$/.exec(location.hash);
  if (match && !document.getElementById('t' + match[1])) {
    const number = Number(match[1]);
    const group = [...document.querySelectorAll('details.group')]
      .find(({dataset}) => number >= dataset.from && number < dataset.to);
    if (group) { fill(group); group.open = true; }
  }
  const target = match && document.getElementById('t' + match[1]);
  if (target) {
    const closed = target.closest('details.group');
    if (closed) closed.open = true;
    target.scrollIntoView();
    target.querySelector('a').focus({preventScroll: true});
  }
};
document.addEventListener('toggle', ({target}) => { if (target.open) fill(target); }, true);
addEventListener('hashchange', reveal);
addEventListener('load', reveal);  // after the browser has gone to the place itself

// Tables.

const numberOf = (text) => {
  const match = /^#?(0x[0-9a-f]+|[-+]?[\d.]+(e[-+]?\d+)?)(?![\w.])/i.exec(text);
  return match ? Number(match[1]) : NaN;
};
const compare = (a, b) => {
  if (!a || !b) return !a - !b;
  const [x, y] = [numberOf(a), numberOf(b)];
  if (isNaN(x) !== isNaN(y)) return isNaN(x) - isNaN(y);
  return x - y || (a < b ? -1 : Number(a > b));
};
const kMostRows = 500;

const setUpGrid = (grid) => {
  const table = grid.querySelector('table');
  const body = table.tBodies[0];
  const more = grid.querySelector('noscript');
  const markups = [...body.rows].map((row) => row.outerHTML);
  if (more) markups.push(...(more.textContent.match(/<tr><th scope=row>[^\n]*/g) || []));
  const rows = markups.map((markup) => {
    let cells, text;
    return {
      markup,
      get cells() { return cells ||= markup.split(/<t[hd][^>]*>/).slice(1).map((cell) => plain(cell)); },
      get text() { return text ||= this.cells.join(' ').toLowerCase(); },
    };
  });
  const things = grid.dataset.things;
  const heads = [...table.tHead.rows[0].cells];
  const filter = make('input', {type: 'search', placeholder: `Filter ${things}`, ariaLabel: `Filter ${things}`});
  const count = make('output', {});
  const tools = make('form', {className: 'tools'}, filter);
  const choices = [];
  let [sorted, direction] = [-1, 1];
  let shown = rows.length;

  const show = () => {
    const words = wordsOf(filter.value);
    let fitting = rows.filter((row) => (!words.length || hasAll(row.text, words)) &&
      choices.every(({select, column}) => !select.value || row.cells[column] === select.value));
    if (sorted >= 0) {
      fitting = fitting.slice()
        .sort((a, b) => direction * compare(a.cells[sorted], b.cells[sorted]));
    }
    const first = fitting.slice(0, kMostRows);
    body.innerHTML = first.map(({markup}) => markup).join('');
    shown = fitting.length;
    const part = first.length < shown ? `, the first ${first.length} are shown` : '';
    count.value = `${shown < rows.length ? `${shown} of ` : ''}${rows.length} ${things}${part}`;
  };

  const sortBy = (head, column) => {
    const button = make('button', {type: 'button'}, ...head.childNodes);
    button.addEventListener('click', () => {
      direction = sorted === column ? -direction : 1;
      sorted = column;
      for (const other of heads) other.removeAttribute('aria-sort');
      head.ariaSort = direction > 0 ? 'ascending' : 'descending';
      show();
    });
    head.append(button);
  };
  // A choice for each column of texts that repeat.
  const chooseFrom = (head, column) => {
    if (rows.length < 8 || column === 0 || table.classList.contains('n' + (column + 1))) return;
    const values = new Set();
    for (const {cells} of rows) if (values.add(cells[column]).size > 40) return;
    if (values.size < 2 || values.size * 2 > rows.length) return;
    const name = head.textContent;
    const select = make('select', {ariaLabel: `${name} of ${things}`}, make('option', {value: ''}, `any ${name}`),
      ...[...values].filter(Boolean).sort(compare).map((value) => make('option', {value}, value)));
    choices.push({select, column});
    count.before(select);
    select.addEventListener('change', show);
  };
  heads.forEach(sortBy);
  setTimeout(() => heads.forEach(chooseFrom), 200);
  tools.append(count);
  tools.addEventListener('submit', (event) => event.preventDefault());
  filter.addEventListener('input', later(show, 40));
  grid.prepend(tools);
  show();
};
document.querySelectorAll('.grid').forEach(setUpGrid);

// The search over everything.

const kMostFound = 40;
let known;
const things = () => known ||= [...document.querySelectorAll('#details .cards, #details .group')]
  .flatMap((element) => {
    const hidden = element.querySelector('noscript');
    const markups = hidden ? hidden.textContent.split(/(?=<article )/) :
      [...element.querySelectorAll('article')].map(({outerHTML}) => outerHTML);
    return markups.map((markup) => {
      const [, id, head] = /id="?(t\d+)"?>.*?<h4>(.*?)<\/h4>/s.exec(markup);
      const title = plain(head.replace(/<em.*/s, ''));
      return {id, title, name: title.toLowerCase(), markup, lower: markup.toLowerCase()};
    });
  });
// The better it fits, the less: the name, its beginning, a part of it, something else.
const rankOf = (thing, words) => {
  const [name] = thing.name.split(' ');
  if (!hasAll(thing.name, words)) {
    if (!hasAll(thing.lower, words)) return -1;
    return hasAll((thing.text ||= plain(thing.markup)).toLowerCase(), words) ? 3 : -1;
  }
  if (words.includes(name) || words.includes(thing.name.split('#')[1])) return 0;
  return ['', '_'].some((between) => name.startsWith(words.join(between))) ? 1 : 2;
};
const around = (text, word) => {
  const lower = text.toLowerCase();
  const at = lower.includes(word) ? lower.indexOf(word) : lower.search(otherOf(word));
  return (at > 30 ? '\u2026 ' : '') + text.slice(Math.max(at - 30, 0), at + 60).trim() + ' \u2026';
};

const box = make('input', {type: 'search', id: 'find', placeholder: 'Name, ID, register \u2026', autocomplete: 'off'});
const found = make('ol', {id: 'found', hidden: true});
const status = make('output', {className: 'status'});
const form = make('form', {}, make('label', {htmlFor: 'find'}, 'Find'), box, status, found);
form.setAttribute('role', 'search');
if (document.getElementById('details')) document.querySelector('header').append(form);

const close = () => { found.hidden = true; found.replaceChildren(); status.value = ''; };
const find = () => {
  const words = wordsOf(box.value);
  if (!words.length) return close();
  const ranks = [[], [], [], []];
  let total = 0;
  for (const thing of things()) {
    const rank = rankOf(thing, words);
    if (rank < 0) continue;
    ++total;
    if (ranks[rank].length < kMostFound) ranks[rank].push(thing);
  }
  const first = ranks.flat().slice(0, kMostFound);
  found.replaceChildren(...first.map((thing) => {
    const link = make('a', {href: '#' + thing.id}, thing.title);
    const other = words.find((word) => !has(thing.name, word));
    return make('li', {}, link, ...(other ? [make('small', {}, around(thing.text, other))] : []));
  }));
  found.hidden = !first.length;
  status.value = total ? `${total} found${total > first.length ? `, the first ${first.length}:` : ''}` : 'nothing found';
};
box.addEventListener('input', later(find, 60));
box.addEventListener('focus', find);
if ('requestIdleCallback' in window) requestIdleCallback(things);
form.addEventListener('submit', (event) => {
  event.preventDefault();
  find();
  const link = found.querySelector('a');
  if (link) link.click();
});
form.addEventListener('keydown', (event) => {
  const links = [box, ...found.querySelectorAll('a')];
  const step = {ArrowDown: 1, ArrowUp: -1}[event.key];
  if (event.key === 'Escape') { close(); box.focus(); close(); }
  if (!step) return;
  event.preventDefault();
  links[(links.indexOf(document.activeElement) + step + links.length) % links.length].focus();
});
found.addEventListener('click', (event) => {
  const link = event.target.closest('a');
  if (!link) return;
  close();
  if (link.hash === location.hash) reveal();
});
addEventListener('keydown', (event) => {
  const first = document.querySelector('input');
  if (event.key === '/' && first && !/INPUT|SELECT/.test(document.activeElement.tagName)) {
    event.preventDefault();
    first.focus();
    first.select();
  }
});
