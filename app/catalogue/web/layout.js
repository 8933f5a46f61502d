// The frame around list, drawing and model: which of them are shown, the theme, what is told of the choice, and the keys
// that work everywhere.

/** @param {(view: string) => void} onView told which view is shown from now on */
export function setUpViews(onView) {
    const main = document.getElementById('main');
    const buttons = [...document.querySelectorAll('[data-view][role=radio]')];
    const show = button => {
        main.dataset.view = button.dataset.view;
        for (const each of buttons) {
            each.setAttribute('aria-checked', String(each === button));
            each.tabIndex = each === button ? 0 : -1;
        }
        onView(button.dataset.view);
    };
    buttons.forEach((button, i) => {
        button.tabIndex = i === 0 ? 0 : -1;
        button.addEventListener('click', () => show(button));
        button.addEventListener('keydown', event => {
            const step = {ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1}[event.key];
            if (step === undefined) return;
            event.preventDefault();
            const next = buttons[(i + step + buttons.length) % buttons.length];
            next.focus();
            show(next);
        });
    });
}

/** As the system wants it, until the reader wants it otherwise. */
export function setUpTheme() {
    const button = document.getElementById('theme');
    const system = matchMedia('(prefers-color-scheme: dark)');
    let isChosen = false;
    const apply = isDark => {
        document.documentElement.dataset.theme = isDark ? 'dark' : 'light';
        button.setAttribute('aria-pressed', String(isDark));
    };
    apply(system.matches);
    system.addEventListener('change', () => { if (!isChosen) apply(system.matches); });
    button.addEventListener('click', () => {
        isChosen = true;
        apply(document.documentElement.dataset.theme !== 'dark');
    });
}

/** Puts the page's own words where the page wants them. */
export function setUpTexts(words) {
    for (const each of document.querySelectorAll('[data-text]')) each.textContent = words[each.dataset.text];
    for (const each of document.querySelectorAll('[data-label]')) name(each, words[each.dataset.label]);
    name(document.getElementById('theme'), words.theme);
    name(document.getElementById('query'), words.search);
    document.getElementById('query').placeholder = words.search;
    document.getElementById('views').setAttribute('aria-label', words.view);
    document.getElementById('list').setAttribute('aria-label', words.list);
    document.querySelector('#rows table').setAttribute('aria-label', words.list);
}

function name(element, text) {
    element.setAttribute('aria-label', text);
    element.title = text;
}

/** "/" searches, Escape gives up: first what `leave` knows of, then the choice. */
export function setUpKeys(selection, list, leave) {
    document.addEventListener('keydown', event => {
        const isTyping = event.target instanceof HTMLInputElement;
        if (event.key === '/' && !isTyping) {
            event.preventDefault();
            list.startSearch();
        } else if (event.key === 'Escape' && !leave()) {
            selection.choose(null, 'keys');
        }
    });
}

/** Tells properties and places of the chosen item. */
export function setUpDetails(data, selection, words) {
    const panel = document.getElementById('details');
    const items = new Map(data.items.map(item => [item.id, item]));
    selection.addEventListener('change', ({detail}) => {
        if (detail.what !== 'chosen') return;
        const item = items.get(selection.chosen?.item);
        panel.hidden = !item;
        panel.replaceChildren(...item ? describe(item, words, () => selection.choose(null, 'details')) : []);
    });
}

function describe(item, words, close) {
    const heading = element('h2', `${item.label}  `);
    heading.append(element('bdi', item.name));
    const button = element('button', '\u00d7');
    button.type = 'button';
    button.className = 'icon';
    name(button, words.close);
    button.addEventListener('click', close);
    const facts = document.createElement('dl');
    const properties = Object.entries(item.properties).filter(([key, value]) => key !== 'Name' || value !== item.name);
    for (const [key, value] of [[words.quantity, String(item.quantity)], ...properties]) {
        const fact = element('dd', value);
        fact.dir = 'auto';
        facts.append(element('dt', key), fact);
    }
    const places = document.createElement('details');
    places.append(element('summary', `${words.instances} (${item.instances.length})`));
    const list = document.createElement('ul');
    for (const instance of item.instances) {
        const place = element('li', instance);
        place.dir = 'auto';
        list.append(place);
    }
    places.append(list);
    return [heading, button, facts, places];
}

function element(tag, text) {
    const made = document.createElement(tag);
    made.textContent = text;
    return made;
}
