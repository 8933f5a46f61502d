// The balloons around the turning model: a ring that follows the anchors, dimmed where these are covered.

const kGap = 10;         // between balloons, pixels
const kBalloon = 30;
const kSmallBalloon = 22;
const kSmallPane = 400;  // that is less high or wide has small ones
const kLeastGap = 2;     // ... before some are left out
const kAway = 26;        // of the ring from the model
const kBulge = 1.18;     // of an ellipse around what is not one
const kSteps = 128;      // of a turn

export class Callouts3d {
    #selection; #layer; #lines; #callouts;

    /** Those without item name nothing that could be chosen, and are left out. */
    constructor(callouts, selection, pane) {
        this.#selection = selection;
        this.#layer = pane.querySelector('.balloons');
        this.#lines = pane.querySelector('.leaders');
        this.#callouts = callouts.filter(each => each.item !== undefined && each.anchors.length > 0)
            .map(each => this.#make(each));
    }

    #make({item, label, anchors}) {
        const balloon = document.createElement('button');
        balloon.type = 'button';
        balloon.tabIndex = -1;
        balloon.className = 'balloon';
        balloon.dataset.item = String(item);
        balloon.textContent = label;
        balloon.addEventListener('click', () => this.#selection.choose({item, part: null}, 'model'));
        balloon.addEventListener('pointerenter', () => this.#selection.hover({item, part: null}, 'model'));
        balloon.addEventListener('pointerleave', () => this.#selection.hover(null, 'model'));
        this.#layer.append(balloon);
        const leaders = anchors.map(({instance, place}) => {
            const line = document.createElementNS('http://www.w3.org/2000/svg', 'path');
            line.dataset.item = String(item);
            this.#lines.append(line);
            return {line, place, instance, pixel: null, isShown: false, isCovered: false};
        });
        return {item, balloon, leaders, angle: 0, isCovered: false};
    }

    /** Shows who is chosen and pointed at. */
    light() {
        for (const {item, balloon, leaders} of this.#callouts) {
            for (const each of [balloon, ...leaders.map(leader => leader.line)]) {
                each.classList.toggle('chosen', this.#selection.isChosen(item));
                each.classList.toggle('hovered', this.#selection.isHovered(item));
            }
        }
    }

    /**
     * @param {object} view `project` gives pixel and depth of a place, `isCovered` tells whether something lies
     *     before that of an instance, `isShown` whether an instance is shown; `ring` is the ellipse around the model, in pixels.
     */
    arrange(view) {
        const lengths = arcLengths(view.ring);
        const {size} = view.ring;
        const room = Math.floor(lengths[kSteps] / (size + kLeastGap));
        this.#layer.classList.toggle('small', size < kBalloon);
        const wanted = this.#callouts.filter(callout => this.#follow(callout, view));
        const shown = wanted.length > room ? this.#mostWanted(wanted, room) : wanted;
        const isShown = new Set(shown);
        for (const callout of this.#callouts) this.#show(callout, isShown.has(callout));
        spread(shown, lengths, size + kGap);
        for (const callout of shown) this.#place(callout, view.ring);
    }

    /** So many: those chosen or pointed at, then those whose parts are seen, then others, some from everywhere of the list. */
    #mostWanted(callouts, count) {
        const ranks = [[], [], []];
        for (const callout of callouts) {
            const isLit = this.#selection.isChosen(callout.item) || this.#selection.isHovered(callout.item);
            ranks[isLit ? 0 : callout.isCovered ? 2 : 1].push(callout);
        }
        return ranks.reduce((taken, rank) => [...taken, ...sample(rank, count - taken.length)], []);
    }

    #show({balloon, leaders}, isWanted) {
        balloon.hidden = !isWanted;
        for (const {line, isShown} of leaders) line.style.display = isWanted && isShown ? '' : 'none';
    }

    /** False when none of its parts is shown. */
    #follow(callout, view) {
        const seen = callout.leaders.filter(leader => {
            leader.isShown = view.isShown(leader.instance);
            if (!leader.isShown) return false;
            leader.pixel = view.project(leader.place);
            leader.isCovered = view.isCovered(leader.pixel, leader.instance);
            return true;
        });
        if (seen.length === 0) return false;
        const {pixel} = seen.find(leader => !leader.isCovered) ?? seen[0];
        const {ring} = view;
        callout.angle = Math.atan2((pixel.y - ring.y) / ring.height, (pixel.x - ring.x) / ring.width);
        callout.isCovered = seen.every(leader => leader.isCovered);
        callout.balloon.classList.toggle('dim', callout.isCovered);
        return true;
    }

    #place({balloon, leaders, angle}, ring) {
        const x = ring.x + Math.cos(angle) * ring.width;
        const y = ring.y + Math.sin(angle) * ring.height;
        balloon.style.transform = `translate(${x.toFixed(1)}px, ${y.toFixed(1)}px) translate(-50%, -50%)`;
        for (const {line, pixel, isCovered} of leaders) {
            if (!pixel) continue;
            const end = `${pixel.x.toFixed(1)} ${pixel.y.toFixed(1)}`;
            line.setAttribute('d', `M${x.toFixed(1)} ${y.toFixed(1)}L${end}m-2.4 0a2.4 2.4 0 1 0 4.8 0a2.4 2.4 0 1 0-4.8 0`);
            line.classList.toggle('dim', isCovered);
        }
    }
}

/**
 * The ellipse on which balloons stand: around the model, whose extent on the screen is `middle` and half of its width and
 * height, and inside the canvas.
 */
export function ringAround({middle, halfWidth, halfHeight}, width, height) {
    const size = balloonSize(width, height);
    const edge = size * 0.75;
    return {
        size,
        x: Math.min(Math.max(middle.x, width * 0.3), width * 0.7),
        y: Math.min(Math.max(middle.y, height * 0.3), height * 0.7),
        width: Math.min(halfWidth * kBulge + kAway, width / 2 - edge),
        height: Math.min(halfHeight * kBulge + kAway, height / 2 - edge),
    };
}

/** How much of the canvas the model may take, so that there is room for the ring. */
export function roomInside(width, height) {
    const edge = balloonSize(width, height) * 0.75 + kAway;
    const side = size => Math.max(size - 2 * edge, 40) / kBulge;
    return {width: side(width), height: side(height)};
}

function balloonSize(width, height) {
    return Math.min(width, height) < kSmallPane ? kSmallBalloon : kBalloon;
}

/** At most so many, evenly out of all. */
function sample(all, count) {
    return all.length <= count ? all : Array.from({length: count}, (_, i) => all[Math.floor(i * all.length / count)]);
}

/** Lengths along the ellipse from angle 0, at kSteps + 1 even angles. */
function arcLengths(ring) {
    const lengths = [0];
    for (let i = 1; i <= kSteps; ++i) {
        const angle = (i - 0.5) / kSteps * 2 * Math.PI;
        const speed = Math.hypot(ring.width * Math.sin(angle), ring.height * Math.cos(angle));
        lengths.push(lengths[i - 1] + speed * 2 * Math.PI / kSteps);
    }
    return lengths;
}

function lengthAt(lengths, angle) {
    const step = ((angle / (2 * Math.PI)) % 1 + 1) % 1 * kSteps;
    const i = Math.min(Math.floor(step), kSteps - 1);
    return lengths[i] + (lengths[i + 1] - lengths[i]) * (step - i);
}

function angleAt(lengths, length) {
    const whole = lengths[kSteps];
    const wanted = (length % whole + whole) % whole;
    const i = Math.max(lengths.findIndex(each => each > wanted) - 1, 0);
    return (i + (wanted - lengths[i]) / (lengths[i + 1] - lengths[i])) / kSteps * 2 * Math.PI;
}

/** Moves neighbours on the ring apart until there is room for each, or less if there is none; as little as that takes. */
function spread(callouts, lengths, wanted) {
    const count = callouts.length;
    if (count < 2) return;
    const whole = lengths[kSteps];
    for (const callout of callouts) callout.at = lengthAt(lengths, callout.angle);
    callouts.sort((a, b) => a.at - b.at);
    const gapBefore = i => i === 0 ? callouts[0].at + whole - callouts[count - 1].at : callouts[i].at - callouts[i - 1].at;
    const first = callouts.reduce((best, _, i) => gapBefore(i) > gapBefore(best) ? i : best, 0);
    const order = [...callouts.slice(first), ...callouts.slice(0, first)];
    const room = Math.min(wanted, whole / count);
    // Seen from the packed places, apart means that shifts never decrease: neighbours that would are joined to runs.
    const runs = [];
    order.forEach((callout, i) => {
        const lap = callout.at < order[0].at ? whole : 0;
        runs.push({shift: callout.at + lap - i * room, count: 1});
        while (runs.length > 1 && runs.at(-2).shift > runs.at(-1).shift) joinLast(runs);
    });
    // The last must not come around to the first: no shift lies further from another than there is room to spare.
    const spare = whole - count * room;
    const least = Math.max(runs[0].shift, (runs[0].shift + runs.at(-1).shift - spare) / 2);
    let i = 0;
    for (const run of runs) {
        const shift = Math.min(Math.max(run.shift, least), least + spare);
        for (let k = 0; k < run.count; ++k, ++i) order[i].angle = angleAt(lengths, shift + i * room);
    }
}

function joinLast(runs) {
    const last = runs.pop();
    const before = runs.at(-1);
    const count = before.count + last.count;
    before.shift = (before.shift * before.count + last.shift * last.count) / count;
    before.count = count;
}
