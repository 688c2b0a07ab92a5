// Pictures, decoded by the browser to exactly the pixels of their file.

import {FileError} from './files.js';

export async function decode(path, bytes, entry) {
    let bitmap = null;
    try {
        bitmap = await createImageBitmap(new Blob([bytes]), {premultiplyAlpha: 'none', colorSpaceConversion: 'none'});
    } catch {
        throw new FileError(path, `${path} is no picture that this browser can read.`, true);
    }
    if (bitmap.width !== entry.width || bitmap.height !== entry.height)
        throw new FileError(path, `${path} is another picture than the one listed.`, true);
    return bitmap;
}

// Reads pixels out of bitmaps: a 2D canvas would lose colours under transparency, WebGL does not.
export class PixelReader {
    constructor() {
        this.gl = document.createElement('canvas').getContext('webgl2');
        if (this.gl)
            this.gl.bindFramebuffer(this.gl.FRAMEBUFFER, this.gl.createFramebuffer());
    }

    // `components` bytes a pixel, rows top first.
    async read(bitmap, components) {
        const gl = this.gl, texture = gl.createTexture(), buffer = gl.createBuffer();
        const rgba = new Uint8Array(4 * bitmap.width * bitmap.height);
        gl.bindTexture(gl.TEXTURE_2D, texture);
        gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, gl.RGBA, gl.UNSIGNED_BYTE, bitmap);
        gl.framebufferTexture2D(gl.FRAMEBUFFER, gl.COLOR_ATTACHMENT0, gl.TEXTURE_2D, texture, 0);
        gl.bindBuffer(gl.PIXEL_PACK_BUFFER, buffer);
        gl.bufferData(gl.PIXEL_PACK_BUFFER, rgba.length, gl.STREAM_READ);
        gl.readPixels(0, 0, bitmap.width, bitmap.height, gl.RGBA, gl.UNSIGNED_BYTE, 0);
        await this.finish();
        gl.bindBuffer(gl.PIXEL_PACK_BUFFER, buffer);
        gl.getBufferSubData(gl.PIXEL_PACK_BUFFER, 0, rgba);
        gl.deleteBuffer(buffer);
        gl.deleteTexture(texture);
        return keep(rgba, components);
    }

    // Until what was asked for is done; the page goes on meanwhile.
    async finish() {
        const gl = this.gl, fence = gl.fenceSync(gl.SYNC_GPU_COMMANDS_COMPLETE, 0);
        gl.flush();
        while (gl.clientWaitSync(fence, 0, 0) === gl.TIMEOUT_EXPIRED)
            await new Promise(done => setTimeout(done, 2));
        gl.deleteSync(fence);
    }

    close() {
        this.gl?.getExtension('WEBGL_lose_context')?.loseContext();
    }
}

// Of red, green, blue, alpha: all, the first three, brightness and alpha, or brightness.
function keep(rgba, components) {
    const kept = [[0], [0, 3], [0, 1, 2], [0, 1, 2, 3]][components - 1];
    if (components === 4)
        return rgba;
    const pixels = new Uint8Array(rgba.length / 4 * components);
    for (let from = 0, to = 0; from < rgba.length; from += 4)
        for (const channel of kept)
            pixels[to++] = rgba[from + channel];
    return pixels;
}
