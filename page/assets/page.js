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
// What is searched for, in terms. A number is also found as it is written the other way: 0x4A as
// 74. "bus 2" is one term, a register is a number of an access, and "fan 3" is also FAN3.
const kNumber = /^(0x[\da-f]+|\d+)$/;
const written = (word) => `(?:0x0*${Number(word).toString(16)}|0*${BigInt(word)})(?![\\w.])`;
const kLeads = new Map([['bus', 'bus'], ['base', 'base'], ['operand', 'operand'], ['number', 'number'], ['register', 'operand'],
  ['reg', 'operand'], ['address', 'operand']]);
const termOf = (word, lead) => {
  if (!kNumber.test(word)) return {word};
  const number = written(word);
  if (lead === 'bus') return {word: 'bus ' + word, inAccess: new RegExp('bus ' + number), isBus: true};
  return {
    word, number, isRegister: kLeads.has(lead) || word.startsWith('0x'), isAccess: kLeads.has(lead),
    other: new RegExp('(?<![\\w.])' + number),
    inAccess: new RegExp('(?<!\\w)' + (kLeads.get(lead) || '(?:base|operand|number)') + ' ' + number),
    inCall: new RegExp(`(?<=(?<!(?<![\\w.])\\d+ )\\((?:[^()]*, )?)${number}(?=[,)])`),
    begins: new RegExp(`(?<![\\w.])${word}`),
    inName: new RegExp((/^[a-z_]+$/.test(lead) ? lead + '_?' : '(?<!\\d)') + word + '(?!\\d)'),
  };
};
const termsOf = (text) => {
  const words = text.toLowerCase().split(/[\s,;]+/).filter(Boolean);
  const isLead = (i) => kLeads.has(words[i]) && kNumber.test(words[i + 1]);
  const terms = words.flatMap((word, i) => isLead(i) ? [] : [termOf(word, words[i - 1] || '')]);
  const said = terms.filter(({word}) => !/^(what|which|reads|writes|drives|the|on|at|of|in)$/.test(word));
  return said.length ? said : terms;
};
const has = (text, term) => term.isBus ? term.inAccess.test(text) : text.includes(term.word) || Boolean(term.other?.test(text));
const hasAll = (text, terms) => terms.every((term) => has(text, term));
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
  const match = /^(?:#|bus )?(0x[0-9a-f]+|[-+]?[\d.]+(e[-+]?\d+)?)(?![\w.])/i.exec(text);
  return match ? Number(match[1]) : NaN;
};
const compare = (a, b) => {
  if (!a || !b) return !a - !b;
  const [x, y] = [numberOf(a), numberOf(b)];
  if (isNaN(x) !== isNaN(y)) return isNaN(x) - isNaN(y);
  return x - y || (a < b ? -1 : Number(a > b));
};
const kMostRows = 500;
const rowsOf = {};  // by what the rows are of

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
  rowsOf[things] = rows;
  const heads = [...table.tHead.rows[0].cells];
  const filter = make('input', {type: 'search', placeholder: `Filter ${things}`, ariaLabel: `Filter ${things}`});
  const count = make('output', {});
  const tools = make('form', {className: 'tools'}, filter);
  const choices = [];
  let [sorted, direction] = [-1, 1];
  let shown = rows.length;

  const show = () => {
    const terms = termsOf(filter.value);
    let fitting = rows.filter((row) => (!terms.length || hasAll(row.text, terms)) &&
      choices.every(({select, column}) => !select.value || row.cells[column] === select.value));
    if (sorted >= 0) {
      fitting = fitting.slice()
        .sort((a, b) => direction * compare(a.cells[sorted], b.cells[sorted]));
    }
    const first = fitting.slice(0, kMostRows);
    body.innerHTML = first.map(({markup}) => markup).join('');
    shown = fitting.length;
    const part = first.length < shown ? `, the first ${first.length} are shown` : '';
    count.value = !shown && rows.length ? `no ${things} match` : `${shown < rows.length ? `${shown} of ` : ''}${rows.length} ${things}${part}`;
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
    if (rows.length < 8 || table.classList.contains('n' + (column + 1))) return;
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
// What things access by calls, from the table of buses: their cards have what they pass.
const accessesByCalls = () => {
  const texts = new Map();
  for (const {cells, markup} of rowsOf.accesses || []) {
    if (!cells[5]) continue;
    const text = ` ${cells[0]}, base ${cells[1]}, operand ${cells[2]}, number ${cells[3]} `;
    for (const [, id] of markup.slice(markup.lastIndexOf('<td>')).matchAll(/href="?#(t\d+)/g)) texts.set(id, (texts.get(id) || '') + text);
  }
  return texts;
};
let known;
const things = () => known ||= readThings(accessesByCalls());
const readThings = (accesses) => [...document.querySelectorAll('#details .cards, #details .group')]
  .flatMap((element) => {
    const hidden = element.querySelector('noscript');
    const markups = hidden ? hidden.textContent.split(/(?=<article )/) :
      [...element.querySelectorAll('article')].map(({outerHTML}) => outerHTML);
    return markups.map((markup) => {
      const [, id, head] = /id="?(t\d+)"?>.*?<h4>(.*?)<\/h4>/s.exec(markup);
      const title = plain(head.replace(/<em.*/s, ''));
      const called = accesses.get(id) || '';
      return {id, title, name: title.toLowerCase(), markup, called, lower: (called + markup).toLowerCase()};
    });
  });
// What a card says: without the numbers of lines and of cells.
const kUnsaid = /<table.*?<\/table>|<figure.*?<\/figure>|<span class="?p"?>.*?<\/span>|<details class="?source"?><summary>.*?<\/summary>|^[ \t]*\d[^\n]*/gms;
const textOf = (thing) => thing.text ||= plain(thing.called + thing.markup.replace(kUnsaid, ' '));
// What the machine does: each action of the overview's table, and what runs it, by their ids.
let knownEffects;
const effects = () => {
  if (knownEffects) return knownEffects;
  knownEffects = new Map();
  let action;
  for (const row of document.querySelectorAll('[aria-label="what the machine does"] tbody tr')) {
    const cells = [...row.cells];
    if (cells[0].scope) action = cells.shift();
    const text = `${action.textContent} is run by ${plain(cells[0].innerHTML)}`;
    for (const link of [action.querySelector('a'), cells[0].querySelector('small + a')])
      if (link && !knownEffects.has(link.hash.slice(1))) knownEffects.set(link.hash.slice(1), text);
  }
  return knownEffects;
};

const kRanks = {same: 0, begins: 1, name: 2, effect: 3, access: 4, call: 5, number: 6, text: 7};
// INLET_TEMP is what "inlet temp" and "inlet temperature" are about.
const isNamed = (own, terms) => {
  const parts = own.split('_');
  return parts.length === terms.length && terms.every(({word}, i) => word.startsWith(parts[i]) && parts[i].length > 2);
};
const rankInName = ({name}, terms) => {
  const [own, , id] = name.split(' ');
  if (terms.length > 1 && isNamed(own, terms)) return kRanks.same;
  return Math.max(...terms.map(({word, number, inName}) => {
    if (number && id && new RegExp('^#' + number).test(id)) return kRanks.same;
    if (number) return inName.test(own) ? terms.length > 1 ? kRanks.begins : kRanks.number : kRanks.text;
    if (own === word) return kRanks.same;
    return own.startsWith(word) ? kRanks.begins : name.includes(word) ? kRanks.name : kRanks.text;
  }));
};
// Numbers are searched for in one access; those that calls pass go with a bus that is used further on.
const rankOfNumbers = (text, numbers) => {
  const accesses = text.match(/bus \S+, .*?number [^\s,]+/g) || [];
  if (accesses.some((access) => numbers.every(({inAccess}) => inAccess.test(access)))) return kRanks.access;
  return Math.max(...numbers.map(({isBus, isAccess, inAccess, inCall, begins, other}) => {
    if (isBus) return inAccess.test(text) ? kRanks.call : NaN;
    if (inCall.test(text)) return kRanks.call;
    if (isAccess ? begins.test(text) : begins.test(text) && !other.test(text)) return kRanks.number;
    return isAccess || !other.test(text) ? NaN : kRanks.text;
  }));
};
// The better a thing fits, the less; NaN: not at all.
const rankOf = (thing, terms) => {
  const rank = rankInName(thing, terms);
  if (rank < kRanks.effect) return rank;
  const words = terms.filter(({inAccess}) => !inAccess);
  const effect = effects().get(thing.id)?.toLowerCase();
  if (words.length && effect && words.every(({word}) => effect.includes(word))) return kRanks.effect;
  if (!terms.every((term) => has(thing.lower, term))) return NaN;
  const text = textOf(thing).toLowerCase();
  if (!words.every((term) => has(text, term))) return NaN;
  const numbers = terms.filter(({inAccess}) => inAccess);
  return numbers.length ? Math.min(Math.max(rankOfNumbers(text, numbers), words.length ? kRanks.text : 0), rank < kRanks.text ? rank : Infinity) : kRanks.text;
};
// The text around what fits best, with that marked.
const around = (thing, terms, rank) => {
  if (rank === kRanks.effect) return [effects().get(thing.id).slice(0, 120) + ' \u2026'];
  const text = textOf(thing);
  const lower = text.toLowerCase();
  const term = terms.find(({number}) => number) || terms.find(({word}) => !thing.name.includes(word)) || terms[0];
  const match = [term.inAccess, term.inCall, term.other, term.begins].map((pattern) => pattern?.exec(lower)).find(Boolean);
  const at = match ? match.index : lower.indexOf(term.word);
  if (at < 0) return [];
  const end = at + (match ? match[0] : term.word).length;
  return [(at > 30 ? '\u2026 ' : '') + text.slice(Math.max(at - 30, 0), at), make('mark', {}, text.slice(at, end)), text.slice(end, end + 50) + ' \u2026'];
};
// What to know of numbers that nothing accesses as they are.
const remarkOn = (terms, best) => {
  const numbers = terms.filter(({isRegister}) => isRegister);
  if (numbers.length !== 1 || (best >= 0 && best !== kRanks.number)) return '';
  const bus = terms.find(({isBus}) => isBus);
  const open = (rowsOf.accesses || []).filter(({cells}) => isNaN(cells[2]) && (!bus || bus.inAccess.test(cells[0])));
  const others = open.length > 2 ? `${open.length} accesses` : open.map(({cells}) => cells[6]).join(' and ');
  return `no access has the operand ${numbers[0].word.replace(/[a-f]/g, (digit) => digit.toUpperCase())}` +
    (others && `, unless ${others} compute${open.length > 1 ? '' : 's'} it`) + (best < 0 ? '' : '; these begin with it');
};

const box = make('input', {type: 'search', id: 'find', placeholder: 'Name, ID, register, bus 2 \u2026', autocomplete: 'off'});
const found = make('ol', {id: 'found', hidden: true});
const status = make('output', {className: 'status'});
const panel = make('div', {id: 'panel'}, status, found);
const form = make('form', {}, make('label', {htmlFor: 'find'}, 'Find'), box, panel);
form.setAttribute('role', 'search');
if (document.getElementById('details')) document.querySelector('header').append(form);

const close = () => { panel.className = ''; found.hidden = true; found.replaceChildren(); status.value = ''; };
const find = () => {
  const terms = termsOf(box.value);
  if (!terms.length) return close();
  const ranks = Object.values(kRanks).map(() => []);
  let total = 0;
  for (const thing of things()) {
    const rank = rankOf(thing, terms);
    if (isNaN(rank)) continue;
    ++total;
    if (ranks[rank].length < kMostFound) ranks[rank].push(thing);
  }
  const best = ranks.findIndex(({length}) => length > 0);
  const first = ranks.flatMap((things, rank) => things.map((thing) => ({thing, rank}))).slice(0, kMostFound);
  found.replaceChildren(...first.map(({thing, rank}) => {
    const link = make('a', {href: '#' + thing.id}, thing.title);
    return make('li', {}, link, ...(rank < kRanks.effect ? [] : [make('small', {}, ...around(thing, terms, rank))]));
  }));
  found.hidden = !first.length;
  panel.className = 'open';
  const remark = remarkOn(terms, best);
  status.value = !total ? 'nothing found' + (remark && ': ' + remark) :
    (remark ? remark + ': ' : '') + `${total} found${total > first.length ? `, the first ${first.length}` : ''}`;
};
const findSoon = later(() => { if (document.activeElement === box) find(); }, 60);
box.addEventListener('input', findSoon);
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
addEventListener('click', ({target}) => { if (!form.contains(target)) close(); });
addEventListener('keydown', (event) => {
  if (event.key === 'Escape') close();
  const first = document.querySelector('input');
  if (event.key === '/' && first && !/INPUT|SELECT/.test(document.activeElement.tagName)) {
    event.preventDefault();
    first.focus();
    first.select();
  }
});
