// Texts with places for values.

/** Puts values into "{places}" of a text. */
export function filled(text, values) {
    return text.replace(/\{(\w+)\}/g, (_, name) => String(values[name]));
}

/** Of a text for one and a text for more, the one that fits, with the number. */
export function counted(one, more, n) {
    return filled(n === 1 ? one : more, {n});
}
