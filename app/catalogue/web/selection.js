// What is chosen and what is pointed at: the one thing that list, drawing and model share.

/**
 * An item's number, and the id of the part by which it was reached, if it was.
 * @typedef {{item: number, part: string|null}} Choice
 */

/** Tells `change` with `source` (who changed it) in its detail. */
export class Selection extends EventTarget {
    /** @type {Choice|null} */
    chosen = null;
    /** @type {Choice|null} */
    hovered = null;

    /** @param {Choice|null} choice @param {string} source */
    choose(choice, source) {
        if (isSame(this.chosen, choice)) return;
        this.chosen = choice;
        this.#tell('chosen', source);
    }

    /** @param {Choice|null} choice @param {string} source */
    hover(choice, source) {
        if (isSame(this.hovered, choice)) return;
        this.hovered = choice;
        this.#tell('hovered', source);
    }

    isChosen(item) { return this.chosen?.item === item; }
    isHovered(item) { return this.hovered?.item === item; }

    #tell(what, source) {
        this.dispatchEvent(new CustomEvent('change', {detail: {what, source}}));
    }
}

function isSame(a, b) {
    return a === b || (a !== null && b !== null && a.item === b.item && a.part === b.part);
}
