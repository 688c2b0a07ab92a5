// A canvas and the program that draws the show on it. Of another size, or after the graphics were
// lost, there is a new one.

import {decode, PixelReader} from './pictures.js';
import {describe, lastError, startProgram, writeTracks} from './score.js';

// The canvas of a program is the one with this name when it opens its stage.
const canvasName = 'vyr-canvas';

export class StageError extends Error {}

export class Stage {
    // Loads the show's own files and opens the stage, with empty textures where a picture is not
    // needed yet.
    static async open(canvas, width, height, code, tracks, files, show) {
        const stage = new Stage();
        stage.canvas = canvas;
        stage.messages = [];
        stage.uploads = []; // [picture, bitmap], to be uploaded
        stage.isLost = false;
        const say = line => stage.messages.push(line);
        stage.program = await startProgram(code, {print: say, printErr: say});
        describe(stage.program);
        writeTracks(stage.program, tracks);
        await stage.writeFiles(files, show);
        stage.program.pictures = await listPictures(files, show);
        stage.load(width, height);
        return stage;
    }

    load(width, height) {
        document.getElementById(canvasName)?.removeAttribute('id');
        this.canvas.id = canvasName;
        if (!this.guarded(() => this.program._vyr_open(width, height)))
            throw new StageError('This browser gives no WebGL 2, which the show is drawn with.');
        this.call(() => this.program._vyr_load());
    }

    // Everything but pictures and music: shaders, objects.
    async writeFiles(files, show) {
        const isWanted = path => path in files.manifest.files;
        const wanted = new Set([...show.files, ...show.choices.flatMap(choice => choice.files)].filter(isWanted));
        await Promise.all([...wanted].map(async path => {
            const bytes = await files.get(path);
            const folder = path.slice(0, path.lastIndexOf('/'));
            if (folder)
                this.program.FS.mkdirTree('/' + folder);
            this.program.FS.writeFile('/' + path, bytes);
        }));
    }

    // Pictures that the show has loaded and that are not in its textures yet.
    get missing() {
        return [...this.program.pictures].filter(([, picture]) => picture.texture && !picture.isThere).map(([path]) => path);
    }

    has(path) {
        const picture = this.program.pictures.get(path);
        return !picture || !picture.texture || picture.isThere;
    }

    // The show goes on without it.
    giveUp(path) {
        this.program.pictures.get(path).isThere = true;
    }

    async take(path, bytes) {
        const picture = this.program.pictures.get(path);
        if (!picture || !picture.texture || picture.isThere)
            return;
        this.uploads.push([picture, await decode(path, bytes, picture)]);
    }

    // This one before the others that wait to be uploaded, if it is among them.
    uploadNow(path) {
        const picture = this.program.pictures.get(path);
        const place = this.uploads.findIndex(([each]) => each === picture);
        if (place < 0)
            return;
        this.uploads.unshift(...this.uploads.splice(place, 1));
        this.upload(1);
    }

    // Uploads what has been decoded; `most` pictures, since each takes its milliseconds.
    upload(most = Infinity) {
        for (; most > 0 && this.uploads.length > 0; most--) {
            const [picture, bitmap] = this.uploads.shift();
            picture.bitmap = bitmap;
            this.program.uploadPicture(picture);
            picture.isThere = true;
            picture.bitmap = null;
            bitmap.close();
        }
    }

    draw(row, seconds) {
        this.call(() => this.program._vyr_draw(row, seconds));
    }

    call(action) {
        if (!this.guarded(action))
            throw new StageError(lastError(this.program));
    }

    // A program that stops has said why in its last line.
    guarded(action) {
        try {
            return action();
        } catch (error) {
            if (!(error instanceof WebAssembly.RuntimeError))
                throw error;
            const line = this.messages.filter(message => !message.startsWith('Aborted')).pop();
            throw new StageError(line || error.message);
        }
    }

    close() {
        this.canvas.getContext('webgl2')?.getExtension('WEBGL_lose_context')?.loseContext();
        this.canvas.remove();
    }
}

// The pictures as platform/web/Pictures.h describes them. Those that the show names itself are here
// before it loads, with their pixels, and so are those without colour.
async function listPictures(files, show) {
    const pictures = new Map(), reader = new PixelReader();
    if (!reader.gl)
        throw new StageError('This browser gives no WebGL 2, which the show is drawn with.');
    const named = new Set(show.files);
    await Promise.all(Object.entries(files.manifest.pictures).map(async ([path, entry]) => {
        const picture = {width: entry.width, height: entry.height, components: entry.components, pixels: null};
        pictures.set(path, picture);
        if (named.has(path) || (entry.components < 3 && isPicked(path, show))) {
            const bitmap = await decode(path, await files.get(path), entry);
            picture.pixels = await reader.read(bitmap, entry.components);
            bitmap.close();
        }
    }));
    reader.close();
    return pictures;
}

function isPicked(path, show) {
    return show.choices.some(choice => choice.files.includes(path));
}
