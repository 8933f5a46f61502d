// The drawing: areas of the parts and balloons that light up, and a paper that can be moved and enlarged.

const kMostZoom = 40;
const kMargin = 12;  // around the picture, its own units
const kDrag = 4;     // pixels that the pointer moves before it is no click

export class Drawing {
    #selection; #svg; #spots = new Map(); #balloons = new Map(); #whole; #box; #drag = null; #pointers = new Map(); #wasDragged = false; #lit = new Set(); #stop = null;

    constructor(data, selection, words) {
        this.#selection = selection;
        const pane = document.getElementById('drawing');
        this.#svg = pane.querySelector(':scope > svg');
        this.#prepare(data, words);
        this.#box = {...this.#whole};
        for (const balloon of [...this.#balloons.values()].flat()) balloon.setAttribute('tabindex', '-1');
        this.#listen(pane);
        selection.addEventListener('change', event => this.#onChange(event.detail));
        this.#setTabStop();
    }

    /** The items of which something is seen. */
    get seenItems() { return new Set(this.#spots.keys()); }

    #prepare(data, words) {
        const svg = this.#svg;
        svg.removeAttribute('width');
        svg.removeAttribute('height');
        svg.setAttribute('role', 'group');
        svg.setAttribute('aria-label', data.title);
        svg.querySelector(':scope > title')?.remove();
        if (data.mode !== 'line' || svg.querySelector('.ground')) svg.classList.add('keeps-paper');
        const names = new Map(data.items.map(item => [item.id, item]));
        for (const spot of svg.querySelectorAll('.hotspot[data-item]')) collect(this.#spots, spot);
        for (const balloon of svg.querySelectorAll('.callout[data-item]')) {
            collect(this.#balloons, balloon);
            const item = names.get(Number(balloon.dataset.item));
            balloon.setAttribute('role', 'button');
            balloon.setAttribute('aria-label', item ? `${words.item} ${item.label}: ${item.name}` : words.item);
            balloon.setAttribute('aria-pressed', 'false');
        }
        this.#whole = this.#extent();
        // What is higher than wide has more room beside the model than above it.
        svg.closest('.panes').classList.toggle('upright', this.#whole.width < this.#whole.height);
    }

    /** What is drawn, without the sheet's own parts list and title, which the page has already. */
    #extent() {
        // What a glass shows is cut to its rim; the box of it is not.
        const drawn = this.#svg.querySelectorAll('.model, .picture, .callouts, .inset > circle, .inset > line');
        const boxes = [...drawn].map(each => boxOf(each, this.#svg)).filter(box => box.width > 0 && box.height > 0);
        if (boxes.length === 0) return {...fromRect(this.#svg.viewBox.baseVal)};
        const x = Math.min(...boxes.map(box => box.x)) - kMargin;
        const y = Math.min(...boxes.map(box => box.y)) - kMargin;
        const right = Math.max(...boxes.map(box => box.x + box.width)) + kMargin;
        const bottom = Math.max(...boxes.map(box => box.y + box.height)) + kMargin;
        return {x, y, width: right - x, height: bottom - y};
    }

    #listen(pane) {
        const svg = this.#svg;
        svg.addEventListener('pointerover', event => this.#selection.hover(choiceAt(event.target), 'drawing'));
        svg.addEventListener('pointerleave', () => this.#selection.hover(null, 'drawing'));
        svg.addEventListener('click', event => this.#onClick(event));
        svg.addEventListener('keydown', event => this.#onKey(event));
        svg.addEventListener('wheel', event => this.#onWheel(event), {passive: false});
        svg.addEventListener('pointerdown', event => this.#onDown(event));
        svg.addEventListener('pointermove', event => this.#onMove(event));
        for (const end of ['pointerup', 'pointercancel', 'pointerleave']) {
            svg.addEventListener(end, event => {
                this.#pointers.delete(event.pointerId);
                this.#drag = null;
            });
        }
        const factors = {in: 1 / 1.5, out: 1.5};
        for (const button of pane.querySelectorAll('[data-zoom]')) {
            button.addEventListener('click', () => {
                const factor = factors[button.dataset.zoom];
                if (factor) this.#zoom(factor, this.#middle());
                else this.#show(this.#whole);
            });
        }
        window.addEventListener('beforeprint', () => this.#setViewBox(this.#whole));
        window.addEventListener('afterprint', () => this.#setViewBox(this.#box));
        this.#show(this.#whole);
    }

    #onClick(event) {
        if (this.#wasDragged) return;
        this.#selection.choose(choiceAt(event.target), 'drawing');
    }

    #onDown(event) {
        this.#pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
        this.#wasDragged = this.#pointers.size > 1;
        this.#drag = this.#wasDragged ? null : {x: event.clientX, y: event.clientY, box: {...this.#box}};
    }

    #onMove(event) {
        if (this.#pointers.size === 2 && this.#pointers.has(event.pointerId)) this.#pinch(event);
        if (!this.#drag || event.buttons === 0) return;
        const dx = event.clientX - this.#drag.x;
        const dy = event.clientY - this.#drag.y;
        if (!this.#wasDragged && Math.hypot(dx, dy) < kDrag) return;
        this.#wasDragged = true;
        const perPixel = 1 / this.#svg.getScreenCTM().a;
        const {box} = this.#drag;
        this.#show({...box, x: box.x - dx * perPixel, y: box.y - dy * perPixel});
    }

    /** Two fingers move apart or together. */
    #pinch(event) {
        const before = spanOf(this.#pointers);
        this.#pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
        const after = spanOf(this.#pointers);
        this.#zoom(before.length / Math.max(after.length, 1), this.#placeAt(after));
    }

    #onWheel(event) {
        event.preventDefault();
        this.#zoom(Math.exp(event.deltaY * 0.0015), this.#placeAt({x: event.clientX, y: event.clientY}));
    }

    /** In the units of the drawing. */
    #placeAt({x, y}) {
        return new DOMPoint(x, y).matrixTransform(this.#svg.getScreenCTM().inverse());
    }

    #onKey(event) {
        const balloon = event.target.closest('.callout');
        if (!balloon) return;
        const all = [...this.#balloons.values()].flat();
        const at = all.indexOf(balloon);
        const steps = {ArrowRight: 1, ArrowDown: 1, ArrowLeft: -1, ArrowUp: -1, Enter: 0, ' ': 0};
        if (!(event.key in steps)) return;
        event.preventDefault();
        const next = all[(at + steps[event.key] + all.length) % all.length];
        this.#selection.choose(choiceAt(next), 'drawing');
        next.focus();
    }

    #middle() {
        return {x: this.#box.x + this.#box.width / 2, y: this.#box.y + this.#box.height / 2};
    }

    #zoom(factor, at) {
        const width = Math.min(Math.max(this.#box.width * factor, this.#whole.width / kMostZoom), this.#whole.width * 2);
        const scale = width / this.#box.width;
        this.#show({
            x: at.x + (this.#box.x - at.x) * scale, y: at.y + (this.#box.y - at.y) * scale,
            width, height: this.#box.height * scale,
        });
    }

    #show(box) {
        this.#box = {...box};
        this.#setViewBox(box);
    }

    #setViewBox({x, y, width, height}) {
        this.#svg.setAttribute('viewBox', `${x} ${y} ${width} ${height}`);
    }

    #onChange({what, source}) {
        const {chosen, hovered} = this.#selection;
        const now = new Set([chosen, hovered].flatMap(choice => choice ? [choice.item] : []));
        for (const item of new Set([...this.#lit, ...now])) {
            for (const spot of this.#spots.get(item) ?? []) this.#light(spot, item);
            for (const balloon of this.#balloons.get(item) ?? []) {
                this.#light(balloon, item);
                balloon.setAttribute('aria-pressed', String(this.#selection.isChosen(item)));
            }
        }
        this.#lit = now;
        this.#setTabStop();
        if (what === 'chosen' && source !== 'drawing' && chosen) this.#bringIntoView(chosen.item);
    }

    #light(shape, item) {
        const {chosen, hovered} = this.#selection;
        const isChosen = this.#selection.isChosen(item);
        shape.classList.toggle('hovered', this.#selection.isHovered(item));
        shape.classList.toggle('chosen', isChosen);
        shape.classList.toggle('this-one', (isChosen && chosen.part === shape.id) || hovered?.part === shape.id);
    }

    /** One balloon can be reached by the tab key. */
    #setTabStop() {
        this.#stop?.setAttribute('tabindex', '-1');
        this.#stop = (this.#balloons.get(this.#selection.chosen?.item) ?? this.#balloons.values().next().value)?.[0];
        this.#stop?.setAttribute('tabindex', '0');
    }

    /** Moves the paper, no more than it must, until balloons and areas of the item are on the screen. */
    #bringIntoView(item) {
        const shapes = [...this.#spots.get(item) ?? [], ...this.#balloons.get(item) ?? []];
        if (shapes.length === 0) return;
        const boxes = shapes.map(shape => boxOf(shape, this.#svg));
        const isInside = boxes.some(box => box.x >= this.#box.x && box.y >= this.#box.y &&
            box.x + box.width <= this.#box.x + this.#box.width && box.y + box.height <= this.#box.y + this.#box.height);
        if (isInside) return;
        const {x, y, width, height} = boxes[0];
        this.#show({...this.#box, x: x + width / 2 - this.#box.width / 2, y: y + height / 2 - this.#box.height / 2});
    }
}

function collect(map, shape) {
    const item = Number(shape.dataset.item);
    if (!map.has(item)) map.set(item, []);
    map.get(item).push(shape);
}

function choiceAt(target) {
    const shape = target.closest('.hotspot[data-item], .callout[data-item]');
    if (!shape) return null;
    return {item: Number(shape.dataset.item), part: shape.classList.contains('hotspot') ? shape.id : null};
}

/** How far two pointers are apart, and the middle between them. */
function spanOf(pointers) {
    const [a, b] = [...pointers.values()];
    return {length: Math.hypot(a.x - b.x, a.y - b.y), x: (a.x + b.x) / 2, y: (a.y + b.y) / 2};
}

function fromRect({x, y, width, height}) {
    return {x, y, width, height};
}

/** The box of a shape in the units of the drawing, whatever groups it lies in. */
function boxOf(shape, svg) {
    const box = shape.getBBox();
    const toDrawing = svg.getScreenCTM()?.inverse().multiply(shape.getScreenCTM()) ?? new DOMMatrix();
    const a = new DOMPoint(box.x, box.y).matrixTransform(toDrawing);
    const b = new DOMPoint(box.x + box.width, box.y + box.height).matrixTransform(toDrawing);
    return {x: Math.min(a.x, b.x), y: Math.min(a.y, b.y), width: Math.abs(b.x - a.x), height: Math.abs(b.y - a.y)};
}
