// What the show is, and its time: description, tracks and clock of the compiled program, without a
// picture. One for the life of the page.

import {FileError} from './files.js';

let compiled = null; // the program's code, compiled once for all that run it

// An instance of the program. `members` are added to it before it starts.
export async function startProgram(code, members) {
    compiled ||= WebAssembly.compile(code);
    const module = await compiled.catch(() => {
        throw new FileError('program.wasm', 'program.wasm arrived broken, or this browser is too old for it.', true);
    });
    return createShow({
        ...members,
        instantiateWasm(imports, done) {
            WebAssembly.instantiate(module, imports).then(instance => done(instance, module));
            return {};
        },
    });
}

export function lastError(program) {
    return program.UTF8ToString(program._vyr_error()).replace(/^show\.so: ((Load|Describe): )?/, '');
}

export function writeTracks(program, tracks) {
    for (const [name, text] of Object.entries(tracks))
        program.FS.writeFile('/' + name, Uint8Array.from(atob(text), c => c.charCodeAt(0)));
    if (!program._vyr_load_tracks())
        throw new Error(lastError(program));
}

export function describe(program) {
    const text = program._vyr_describe();
    if (!text)
        throw new Error(lastError(program));
    return JSON.parse(program.UTF8ToString(text));
}

export class Score {
    static async open(code, tracks) {
        const score = new Score();
        score.program = await startProgram(code, {print() {}, printErr() {}});
        score.show = describe(score.program);
        writeTracks(score.program, tracks);
        return score;
    }

    get seconds() {
        return this.show.lastRow / this.show.rowsPerSecond;
    }

    // The files that the tracks pick at `row`.
    picked(row) {
        const files = [];
        for (const {track, files: from} of this.show.choices) {
            const index = Math.trunc(this.program._vyr_sample(track, row));
            if (index >= 0 && index < from.length)
                files.push(from[index]);
        }
        return files;
    }

    // All that the tracks pick, in the order of its first use from `row` on, what comes only before
    // it last. With `end`, what is picked up to there.
    order(row, end = Infinity) {
        const files = new Set(), last = this.show.lastRow;
        for (let at = row; at <= Math.min(last, end); at++)
            this.picked(at).forEach(file => files.add(file));
        for (let at = 0; at < row && end === Infinity; at++)
            this.picked(at).forEach(file => files.add(file));
        return [...files];
    }

    // The last frame before the frame `end` that leaves something to later ones; -1: there is none.
    reachingBefore(end, framesPerSecond) {
        let frame = end - 1;
        while (frame >= 0 && !this.program._vyr_reaches_later(frame / framesPerSecond * this.show.rowsPerSecond))
            frame--;
        return frame;
    }
}
