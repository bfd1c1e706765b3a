// What the page does beyond its links: the filter of the list, keys, the title. All else is the
// browser's own.
(() => {
  'use strict';
  const nav = document.getElementById('-list');
  const filter = document.getElementById('-filter');
  const nothing = document.getElementById('-nothing');
  const site = document.title;
  // As names are compared: regardless of case, an underscore as a blank.
  const folded = (text) => text.toLowerCase().replaceAll('_', ' ');
  const entries = Array.from(nav.querySelectorAll('li'), (item) => {
    const link = item.firstElementChild;
    return { item, link, name: folded(link.textContent), text: null };
  });

  const article = (entry) => document.getElementById(entry.link.getAttribute('href').slice(1));
  const text = (entry) => entry.text ??= folded(article(entry).querySelector('.text').textContent);
  const shown = () => entries.filter((entry) => !entry.item.hidden);

  // Names that hold what was typed, and those whose texts do.
  function show() {
    const wanted = folded(filter.value.trim());
    let found = false;
    for (const entry of entries) {
      const named = entry.name.includes(wanted);
      entry.item.hidden = !named && !text(entry).includes(wanted);
      entry.item.classList.toggle('inside', !named);
      found ||= !entry.item.hidden;
    }
    nothing.hidden = found;
  }

  function go(entry) {
    if (entry) {
      entry.link.click();
    }
  }

  function best() {
    const wanted = folded(filter.value.trim());
    const some = shown();
    return some.find((entry) => entry.name === wanted) ??
      some.find((entry) => !entry.item.classList.contains('inside')) ?? some[0];
  }

  // Down from the filter into the list, up from its top into the filter.
  function step(by) {
    const some = shown();
    const at = some.findIndex((entry) => entry.link === document.activeElement);
    const next = at < 0 ? (by > 0 ? 0 : -1) : at + by;
    if (next < 0) {
      filter.focus();
    } else if (next < some.length) {
      some[next].link.focus();
    }
  }

  function find() {
    if (filter.offsetParent === null) {
      location.hash = '#-list';
    }
    filter.focus();
    filter.select();
  }

  function cancel() {
    if (filter.value !== '') {
      filter.value = '';
      show();
      filter.focus();
    } else {
      document.activeElement.blur();
    }
  }

  nav.addEventListener('keydown', (event) => {
    const keys = {
      ArrowDown: () => step(1),
      ArrowUp: () => step(-1),
      Escape: cancel,
      Enter: event.target === filter ? () => go(best()) : undefined,
    };
    const plain = !(event.altKey || event.ctrlKey || event.metaKey || event.isComposing);
    const act = plain && Object.hasOwn(keys, event.key) ? keys[event.key] : undefined;
    if (act) {
      event.preventDefault();
      act();
    }
  });
  document.addEventListener('keydown', (event) => {
    const plain = !(event.altKey || event.ctrlKey || event.metaKey);
    if (event.key === '/' && plain && event.target !== filter) {
      event.preventDefault();
      find();
    }
  });

  // The name of the note goes into the title, and so into the browser's history. The address is
  // asked, because the page has no :target yet while it is read.
  function arrive() {
    const target = document.getElementById(location.hash.slice(1));
    const here = target === null ? document.getElementById('home') :
      target.localName === 'article' ? target : null;
    for (const { link } of entries) {
      if (here !== null && link.hash === '#' + here.id) {
        link.setAttribute('aria-current', 'page');
        link.scrollIntoView({ block: 'nearest' });
      } else {
        link.removeAttribute('aria-current');
      }
    }
    const name = here === null ? '' : here.querySelector('h2').textContent;
    document.title = here === null || here.id === 'home' ? site : name + ' - ' + site;
  }

  filter.addEventListener('input', show);
  filter.parentElement.hidden = false;
  window.addEventListener('hashchange', arrive);
  show();
  arrive();
})();
