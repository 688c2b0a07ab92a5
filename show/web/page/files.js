// The files of a show, as its manifest lists them: fetched, checked, unpacked, kept.

const idleMilliseconds = 20000; // a connection that brings nothing for so long is tried anew
const tries = 3, pauseMilliseconds = 700;
const parallel = 4;

// A file that did not come. The message is one sentence that names it.
export class FileError extends Error {
    constructor(path, message, isFinal) {
        super(message);
        this.path = path;
        this.isFinal = isFinal; // trying again would bring the same
    }
}

const pause = milliseconds => new Promise(done => setTimeout(done, milliseconds));

// The address of a file beside this page; its name may hold any character.
function addressOf(url) {
    const [path, version] = url.split(/\?(?=[^?]*$)/);
    const address = path.split('/').map(encodeURIComponent).join('/');
    return new URL(`${address}?${version}`, document.baseURI).href;
}

async function unpack(bytes) {
    const isPacked = bytes[0] === 0x1f && bytes[1] === 0x8b; // else the server did it on the way
    if (!isPacked)
        return bytes;
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
    return new Uint8Array(await new Response(stream).arrayBuffer());
}

function join(chunks, length) {
    const whole = new Uint8Array(length);
    let at = 0;
    for (const chunk of chunks) {
        whole.set(chunk, at);
        at += chunk.length;
    }
    return whole;
}

export class Files {
    constructor() {
        this.manifest = null;
        this.received = 0; // bytes, of all files
        this.expected = 1; // bytes, of what has been asked for at the beginning
        this.arrived = new Map(); // path: promise of its bytes
        this.waiting = []; // paths that nobody fetches yet, the first first
        this.running = 0;
        this.onprogress = () => {};
    }

    async open() {
        if (location.protocol === 'file:')
            throw new FileError('index.html', 'This page has to come from a server: ./web serve is one.', true);
        const text = await this.fetchWhole('manifest.json', 'manifest.json', null);
        try {
            this.manifest = JSON.parse(new TextDecoder().decode(text));
        } catch {
            throw new FileError('manifest.json', 'manifest.json: the server sent something else.', true);
        }
    }

    entry(path) {
        return this.manifest.files[path] || this.manifest.pictures[path];
    }

    // The bytes of a file of the show, fetched once; now, before all that wait.
    get(path) {
        const place = this.waiting.indexOf(path);
        if (place >= 0)
            this.waiting.splice(place, 1);
        if (!this.arrived.has(path))
            this.arrived.set(path, this.fetchEntry(path, this.entry(path)));
        return this.arrived.get(path);
    }

    // Asks for all of these at once; whoever needs one gets it, or hears why not.
    ask(paths) {
        const listed = [...new Set(paths)].filter(path => this.entry(path));
        this.expected = listed.reduce((sum, path) => sum + this.entry(path).bytes, this.received);
        listed.forEach(path => this.get(path).catch(() => {}));
    }

    // What the page itself needs: manifest.code, manifest.tracks, ...
    getOwn(name) {
        const entry = this.manifest[name];
        if (!this.arrived.has(name))
            this.arrived.set(name, this.fetchEntry(entry ? entry.url.replace(/\?[^?]*$/, '') : name, entry));
        return this.arrived.get(name);
    }

    // Forgets a file that did not come, so that it can be asked for again.
    forget(path) {
        this.arrived.delete(path);
    }

    // These come next, in this order, a few at a time; what waited before comes no more.
    // `ondone(path, bytes, error)` for each of them.
    line(paths, ondone) {
        this.waiting = paths.filter(path => !this.arrived.has(path));
        this.ondone = ondone;
        this.advance();
    }

    advance() {
        while (this.running < parallel && this.waiting.length > 0) {
            const path = this.waiting[0];
            this.running++;
            this.get(path)
                .then(bytes => this.ondone(path, bytes, null), error => this.ondone(path, null, error))
                .finally(() => { this.running--; this.advance(); });
        }
    }

    fetchEntry(path, entry) {
        if (!entry)
            return Promise.reject(new FileError(path, `${path} is not part of this site.`, true));
        return this.fetchWhole(path, entry.url, entry.bytes)
            .then(bytes => entry.packed ? unpack(bytes) : bytes)
            .catch(error => { throw error instanceof FileError ? error : new FileError(path, `${path} arrived broken.`, true); });
    }

    async fetchWhole(path, url, size) {
        for (let attempt = 1; ; attempt++) {
            try {
                return await this.fetchOnce(path, url, size);
            } catch (error) {
                if (error.isFinal || attempt === tries)
                    throw error;
                await pause(attempt * pauseMilliseconds);
            }
        }
    }

    async fetchOnce(path, url, size) {
        const stop = new AbortController();
        let idle = setTimeout(() => stop.abort(), idleMilliseconds);
        const stillComing = () => { clearTimeout(idle); idle = setTimeout(() => stop.abort(), idleMilliseconds); };
        const before = this.received;
        try {
            const address = size === null ? new URL(url, document.baseURI).href : addressOf(url);
            const response = await fetch(address, {signal: stop.signal, cache: size === null ? 'no-cache' : 'default'});
            if (!response.ok)
                throw new FileError(path, response.status === 404 ? `${path} is missing on the server.` : `The server answers ${response.status} for ${path}.`, response.status < 500);
            const bytes = await this.readBody(response, stillComing);
            this.check(path, size, bytes, response);
            return bytes;
        } catch (error) {
            if (error instanceof FileError)
                throw error;
            this.received = before;
            throw new FileError(path, `${path} did not arrive: the connection broke or brought half of it.`, false);
        } finally {
            clearTimeout(idle);
        }
    }

    async readBody(response, stillComing) {
        const reader = response.body.getReader(), chunks = [];
        let length = 0;
        for (;;) {
            const {done, value} = await reader.read();
            if (done)
                return join(chunks, length);
            stillComing();
            chunks.push(value);
            length += value.length;
            this.received += value.length;
            this.onprogress();
        }
    }

    check(path, size, bytes, response) {
        if (size === null || bytes.length === size)
            return;
        const type = (response.headers.get('content-type') || '').split(';')[0];
        if (type === 'text/html')
            throw new FileError(path, `${path}: the server sent a page (text/html) in its place.`, true);
        throw new FileError(path, `${path} arrived broken: ${bytes.length} bytes, and it has ${size}.`, false);
    }
}
