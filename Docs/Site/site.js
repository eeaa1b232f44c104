// Searches names and texts of all pages. The index is loaded with the first key.
'use strict';
const root = document.currentScript.dataset.root;
const field = document.getElementById('search');
const list = document.getElementById('results');
const kMost = 30;

// How well an entry [name, kind, url, text] fits; 0 for not at all. Names count more than texts.
function rank([name, kind, , text], words) {
  const lower = name.toLowerCase();
  if (!words.every(word => lower.includes(word) || text.includes(word))) return 0;
  const last = lower.split('::').pop();
  const bonus = kind === 'guide' ? 1 : 0;
  if (words.length === 1 && (lower === words[0] || last === words[0])) return 6 + bonus;
  if (words.length === 1 && (lower.startsWith(words[0]) || last.startsWith(words[0]))) return 4 + bonus;
  return (words.every(word => lower.includes(word)) ? 3 : 1) + bonus;
}

function show() {
  const words = field.value.toLowerCase().split(/\s+/).filter(Boolean);
  const found = !words.length || !window.searchIndex ? [] :
      searchIndex.map(entry => ({entry, rank: rank(entry, words)})).filter(hit => hit.rank)
          .sort((a, b) => b.rank - a.rank || a.entry[0].length - b.entry[0].length).slice(0, kMost);
  list.replaceChildren(...found.map(({entry: [name, kind, url]}) => {
    const link = document.createElement('a');
    link.href = root + url;
    link.append(name, Object.assign(document.createElement('small'), {textContent: kind}));
    const item = document.createElement('li');
    item.append(link);
    return item;
  }));
  if (words.length && !found.length) list.append(Object.assign(document.createElement('li'), {textContent: 'Nothing found'}));
  list.hidden = !words.length;
}

field.addEventListener('focus', () => {
  if (document.getElementById('search-index')) return;
  document.head.append(Object.assign(document.createElement('script'),
                                     {id: 'search-index', src: root + 'search-index.js', onload: show}));
});
field.addEventListener('input', show);
document.addEventListener('keydown', event => {
  const links = [field, ...list.querySelectorAll('a')];
  const at = links.indexOf(document.activeElement);
  if (event.key === '/' && at < 0) field.focus();
  else if (event.key === 'Escape' && at >= 0) { field.value = ''; show(); field.blur(); }
  else if (event.key === 'ArrowDown' && at >= 0) (links[at + 1] || field).focus();
  else if (event.key === 'ArrowUp' && at >= 0) (links[at - 1] || field).focus();
  else if (event.key === 'Enter' && at === 0 && links[1]) links[1].click();
  else return;
  event.preventDefault();
});
document.addEventListener('click', event => { if (!event.target.closest('.search')) list.hidden = true; });

// The page that is open, in the menu.
for (const link of document.querySelectorAll('nav.site a'))
  if (link.pathname === location.pathname) link.setAttribute('aria-current', 'page');
