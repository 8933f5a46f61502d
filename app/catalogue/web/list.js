// The parts list: rows that can be searched, sorted, filtered and walked through with the keyboard.

import {filled} from './texts.js';

const kMostFilters = 3;
const kMostChoices = 24;  // of a property, or it is none to filter by

/** Texts and numbers in the order that people expect: 2 before 10. */
const collator = new Intl.Collator(undefined, {numeric: true, sensitivity: 'base'});

export class PartsList {
    #selection; #words; #items; #seen; #rows = new Map(); #shown = []; #sort = null;
    #query; #body; #filters = []; #lit = new Set(); #stop = null;

    /**
     * @param {object} data what the page was told
     * @param {Set<number>} seen items of which the drawing shows something
     */
    constructor(data, selection, words, seen) {
        this.#selection = selection;
        this.#words = words;
        this.#items = data.items.map((item, order) => ({...item, order, text: searchTextOf(item), ranks: {}}));
        this.#seen = seen;
        this.#query = document.getElementById('query');
        this.#body = document.querySelector('#rows tbody');
        this.#makeHead();
        this.#makeFilters();
        for (const item of this.#items) this.#rows.set(item.id, this.#makeRow(item));
        this.#query.addEventListener('input', () => this.#refresh());
        this.#query.addEventListener('keydown', event => this.#onQueryKey(event));
        this.#body.addEventListener('keydown', event => this.#onKey(event));
        this.#body.addEventListener('pointerleave', () => selection.hover(null, 'list'));
        selection.addEventListener('change', event => this.#onChange(event.detail));
        this.#refresh();
    }

    /** Puts the cursor into the search field. */
    startSearch() {
        this.#query.focus();
        this.#query.select();
    }

    get #columns() {
        const columns = ['label', 'quantity', 'name'];
        return this.#items.some(item => item.tag !== '') ? [...columns, 'tag'] : columns;
    }

    #makeHead() {
        const row = document.querySelector('#rows thead').insertRow();
        row.setAttribute('role', 'row');
        document.querySelector('#rows table').dataset.columns = String(this.#columns.length);
        for (const column of this.#columns) {
            const cell = document.createElement('th');
            cell.scope = 'col';
            cell.setAttribute('role', 'columnheader');
            cell.className = column;
            cell.setAttribute('aria-sort', 'none');
            const button = document.createElement('button');
            button.type = 'button';
            button.textContent = this.#words[column];
            cell.dataset.text = this.#words[column];
            button.addEventListener('click', () => this.#sortBy(column));
            cell.append(button);
            row.append(cell);
        }
    }

    #makeFilters() {
        const {all, shown, unseen, parts} = this.#words;
        if (this.#items.some(item => !this.#seen.has(item.id))) {
            this.#addFilter(parts, [all, shown, unseen],
                (item, choice) => this.#seen.has(item.id) === (choice === 1));
        }
        for (const [name, values] of this.#properties().slice(0, kMostFilters)) {
            this.#addFilter(name, [all, ...values],
                (item, choice) => item.properties[name] === values[choice - 1]);
        }
    }

    /** Properties that tell items apart into a handful of kinds, with their values. */
    #properties() {
        const found = new Map();
        for (const item of this.#items) {
            for (const [name, value] of Object.entries(item.properties)) {
                found.set(name, (found.get(name) ?? new Set()).add(value));
            }
        }
        const isTelling = values => values.size > 1 && values.size <= kMostChoices && values.size < this.#items.length;
        return [...found].filter(([name, values]) => name !== 'Name' && isTelling(values))
            .map(([name, values]) => [name, [...values].sort(collator.compare)]);
    }

    /** The first choice passes everything. */
    #addFilter(name, choices, passes) {
        const select = document.createElement('select');
        select.setAttribute('aria-label', name);
        choices.forEach((choice, i) => select.add(new Option(i === 0 ? `${name}: ${choice}` : choice, String(i))));
        select.addEventListener('change', () => {
            select.classList.toggle('filters-out', select.selectedIndex > 0);
            this.#refresh();
        });
        document.getElementById('filters').append(select);
        this.#filters.push(item => select.selectedIndex === 0 || passes(item, select.selectedIndex));
    }

    #makeRow(item) {
        const row = document.createElement('tr');
        row.dataset.item = String(item.id);
        row.setAttribute('role', 'row');
        row.setAttribute('aria-selected', 'false');
        row.tabIndex = -1;
        for (const column of this.#columns) {
            const cell = row.insertCell();
            cell.className = column;
            cell.setAttribute('role', 'gridcell');
            cell.textContent = String(item[column]);
            if (column === 'name' || column === 'tag') cell.dir = 'auto';
            if (column === 'name') cell.style.setProperty('--level', String(item.level));
        }
        row.classList.toggle('unseen', !this.#seen.has(item.id));
        row.addEventListener('click', () => this.#selection.choose({item: item.id, part: null}, 'list'));
        row.addEventListener('pointerenter', () => this.#selection.hover({item: item.id, part: null}, 'list'));
        return row;
    }

    #sortBy(column) {
        const isSame = this.#sort?.column === column;
        if (isSame && this.#sort.sign < 0) this.#sort = null;
        else this.#sort = {column, sign: isSame ? -1 : 1};
        for (const cell of document.querySelectorAll('#rows th')) {
            const isSorted = cell.classList.contains(this.#sort?.column ?? '-');
            cell.setAttribute('aria-sort', !isSorted ? 'none' : this.#sort.sign > 0 ? 'ascending' : 'descending');
        }
        this.#refresh();
    }

    #matches(item, words) {
        return words.every(word => item.text.includes(word)) && this.#filters.every(passes => passes(item));
    }

    #refresh() {
        const words = this.#query.value.toLocaleLowerCase().split(/\s+/).filter(word => word !== '');
        this.#shown = this.#items.filter(item => this.#matches(item, words));
        if (this.#sort) {
            const {column, sign} = this.#sort;
            this.#rank(column);
            this.#shown.sort((a, b) => sign * (a.ranks[column] - b.ranks[column]) || a.order - b.order);
        }
        this.#body.replaceChildren(...this.#shown.map(item => this.#rows.get(item.id)));
        const none = document.querySelector('#rows .none');
        none.textContent = this.#words.none;
        none.hidden = this.#shown.length > 0;
        document.getElementById('count').textContent =
            filled(this.#words.count, {shown: this.#shown.length, all: this.#items.length});
        this.#setTabStop();
    }

    /** Compares the texts of a column once and for all; equal ones get the same rank. */
    #rank(column) {
        if (this.#items[0]?.ranks[column] !== undefined) return;
        const texts = [...new Set(this.#items.map(item => item[column]))].sort(collator.compare);
        let rank = 0;
        const ranks = new Map(texts.map((text, i) => {
            if (i > 0 && collator.compare(texts[i - 1], text) !== 0) ++rank;
            return [text, rank];
        }));
        for (const item of this.#items) item.ranks[column] = ranks.get(item[column]);
    }

    /** One row can be reached by the tab key: the chosen one, else the first. */
    #setTabStop() {
        if (this.#stop) this.#stop.tabIndex = -1;
        const chosen = this.#rows.get(this.#selection.chosen?.item);
        this.#stop = chosen?.isConnected ? chosen : this.#body.rows[0];
        if (this.#stop) this.#stop.tabIndex = 0;
    }

    #onQueryKey(event) {
        if (event.key === 'ArrowDown' || event.key === 'Enter') {
            event.preventDefault();
            this.#walkTo(this.#body.rows[0]);
        } else if (event.key === 'Escape' && this.#query.value !== '') {
            event.stopPropagation();
            this.#query.value = '';
            this.#refresh();
        }
    }

    #onKey(event) {
        const row = event.target.closest('tr');
        const rows = this.#body.rows;
        const targets = {
            ArrowDown: row.nextElementSibling, ArrowUp: row.previousElementSibling,
            Home: rows[0], End: rows[rows.length - 1], Enter: row, ' ': row,
        };
        if (!(event.key in targets)) return;
        event.preventDefault();
        if (event.key === 'ArrowUp' && !targets.ArrowUp) this.startSearch();
        else this.#walkTo(targets[event.key]);
    }

    #walkTo(row) {
        if (!row) return;
        row.focus();
        this.#selection.choose({item: Number(row.dataset.item), part: null}, 'list');
    }

    #onChange({what, source}) {
        const {chosen, hovered} = this.#selection;
        const now = new Set([chosen, hovered].flatMap(choice => choice ? [choice.item] : []));
        for (const id of new Set([...this.#lit, ...now])) {
            this.#rows.get(id)?.classList.toggle('hovered', this.#selection.isHovered(id));
            this.#rows.get(id)?.setAttribute('aria-selected', String(this.#selection.isChosen(id)));
        }
        this.#lit = now;
        this.#setTabStop();
        const row = this.#rows.get(this.#selection[what]?.item);
        // A row under the pointer stays there; one that was chosen may have lost its place to what is told about it.
        if (!row || (what === 'hovered' && source === 'list')) return;
        if (what === 'chosen' && !row.isConnected) this.#showAll();
        row.scrollIntoView({block: 'nearest'});
    }

    /** What is chosen elsewhere is not hidden by what was searched before. */
    #showAll() {
        this.#query.value = '';
        for (const select of document.querySelectorAll('#filters select')) {
            select.selectedIndex = 0;
            select.classList.remove('filters-out');
        }
        this.#refresh();
    }
}

function searchTextOf({label, name, tag, properties}) {
    return [label, name, tag, ...Object.values(properties)].join('\n').toLocaleLowerCase();
}
