"""What a developed picture is laid on: a print with a foot, a round one, a torn one, a stamp, a strip of film; or
nothing, when it is cut out. Every shape gives a straight-alpha RGBA image with a soft shadow in its clear margin."""

import numpy as np
from PIL import Image, ImageChops, ImageDraw, ImageFilter

from film import blur

MARGIN = 10             # transparent pixels around the paper, so that a turned sprite has soft edges
BORDER = 18             # paper left, right and above the picture
FOOT = 44               # paper below it, like an instant photo
PAPER = (247, 241, 228)
SUPERSAMPLE = 4         # outlines are drawn larger and scaled down
FRAMES = 4              # on a strip of film
GAP = 12                # between two of its frames
BAND = 38               # with the holes, above and below them
FILM = (20, 15, 13)


def picture_size(shape, width, height):
    """Size of the picture, or of each frame of a strip, in a print whose paper's file is width x height pixels."""
    if shape == "cutout":
        return width, height
    if shape == "strip":
        return (width - 2 * MARGIN - (FRAMES + 1) * GAP) // FRAMES, height - 2 * MARGIN - 2 * BAND
    return width - 2 * (MARGIN + BORDER), height - 2 * MARGIN - BORDER - FOOT


def paper_size(shape, width, height):
    """Size of the paper's file for pictures of this size: what picture_size() undoes."""
    if shape == "cutout":
        return width, height
    if shape == "strip":
        return FRAMES * width + (FRAMES + 1) * GAP + 2 * MARGIN, height + 2 * MARGIN + 2 * BAND
    return width + 2 * (MARGIN + BORDER), height + 2 * MARGIN + BORDER + FOOT


def _mask(size, draw_outline):
    """An outline as an antialiased mask; draw_outline(draw, scale) draws it white."""
    mask = Image.new("L", (size[0] * SUPERSAMPLE, size[1] * SUPERSAMPLE), 0)
    draw_outline(ImageDraw.Draw(mask), SUPERSAMPLE)
    return mask.resize(size, Image.LANCZOS)


def _rectangle(size, box, radius):
    return _mask(size, lambda draw, s: draw.rounded_rectangle(
        [box[0] * s, box[1] * s, box[2] * s - 1, box[3] * s - 1], radius * s, 255))


def _disc(size, centre, radius):
    return _mask(size, lambda draw, s: draw.ellipse(
        [(centre[0] - radius) * s, (centre[1] - radius) * s, (centre[0] + radius) * s, (centre[1] + radius) * s], 255))


def _shadow(sheet):
    return ImageChops.offset(sheet.filter(ImageFilter.GaussianBlur(3.2)), 1, 2).point(lambda v: int(v * 0.42))


def _fibre(size, seed):
    """Old paper, a float picture."""
    roll = np.random.default_rng(seed + 1)
    return np.array(PAPER) + 1.6 * blur(roll.normal(size=(size[1], size[0], 1)), 0.7)


def _aged(paper, size):
    """A shade darker towards the edges of the file."""
    width, height = size
    edge = np.minimum.reduce([*np.mgrid[0:height, 0:width], *np.mgrid[0:height, 0:width][:, ::-1, ::-1]]) - MARGIN
    return paper - 10 * np.exp(-np.maximum(edge, 0) / 7.0)[..., None] * np.array([0.6, 1.0, 1.6])


def _bytes(tone):
    return Image.fromarray((tone * 255 + 0.5).astype(np.uint8), "RGB")


def _over_shadow(colour, sheet, shadow):
    """Straight alpha: the sheet over a black shadow. Clear pixels keep the paper's colour, for soft filtering."""
    alpha = sheet + shadow * (1 - sheet)
    share = np.where(alpha > 0, sheet / np.maximum(alpha, 1e-6), 0)[..., None]
    rgb = np.where(alpha[..., None] > 0, colour * share, 0)
    rgba = np.dstack([rgb, alpha * 255])
    return Image.fromarray((rgba + 0.5).astype(np.uint8), "RGBA")


def _lay(image, sheet):
    return _over_shadow(np.asarray(image, float), np.asarray(sheet, float) / 255, np.asarray(_shadow(sheet), float) / 255)


def _print(tones, size, seed):
    """The picture stamped into its paper: a dark hairline around it, rounded corners."""
    image = Image.fromarray(np.clip(_aged(_fibre(size, seed), size), 0, 255).astype(np.uint8), "RGB")
    tone = tones[0]
    left = top = MARGIN + BORDER
    inner = (left, top, left + tone.shape[1], top + tone.shape[0])
    ImageDraw.Draw(image).rectangle([inner[0] - 1, inner[1] - 1, inner[2], inner[3]], outline=(214, 205, 188))
    picture = Image.new("RGB", size)
    picture.paste(_bytes(tone), inner[:2])
    image.paste(picture, (0, 0), _rectangle(size, inner, 3))
    return image, _rectangle(size, (MARGIN, MARGIN, size[0] - MARGIN, size[1] - MARGIN), 5)


def print_(tones, size, seed):
    return _lay(*_print(tones, size, seed))


def round_(tones, size, seed):
    """The largest disc of the picture, in a ring of paper; the file is square."""
    tone = tones[0]
    across = min(tone.shape[:2])
    side = across + 2 * (MARGIN + BORDER)
    top, left = ((length - across) // 2 for length in tone.shape[:2])
    centre = side / 2, side / 2
    image = Image.fromarray(np.clip(_fibre((side, side), seed), 0, 255).astype(np.uint8), "RGB")
    image.paste((214, 205, 188), (0, 0), _disc((side, side), centre, across / 2 + 1))
    image.paste(_bytes(tone[top:top + across, left:left + across]), (MARGIN + BORDER, MARGIN + BORDER),
                _disc((across, across), (across / 2, across / 2), across / 2))
    return _lay(image, _disc((side, side), centre, side / 2 - MARGIN))


def _tear(width, seed, rough):
    """Heights of a torn edge: a slow wave with ever finer ones on it, `rough` pixels high."""
    roll, x, edge = np.random.default_rng(seed), np.arange(width), 0
    for octave in range(6):
        knots = roll.normal(size=4 * 2 ** octave + 2)
        edge = edge + np.interp(x, np.linspace(0, width, knots.size), knots) * rough / 1.75 ** octave
    return edge


def torn(tones, size, seed):
    """A print whose foot was torn off, across the picture's lower corner: white fibres along the tear."""
    image, sheet = _print(tones, size, seed)
    width, height = size
    line = height - 96 + np.linspace(34, -34, width) * (1 if seed % 2 else -1) + _tear(width, seed, 9)
    fibres = line - 7 - np.abs(_tear(width, seed + 2, 4))
    y = np.arange(height)[:, None]
    colour = np.asarray(image, float)
    bare = np.clip(y - fibres[None] + 0.5, 0, 1)[..., None]
    colour = colour * (1 - bare) + (_fibre(size, seed + 5) + 5) * bare
    kept = np.asarray(sheet, float) * np.clip(line[None] - y + 0.5, 0, 1)
    return _lay(np.clip(colour, 0, 255), Image.fromarray(kept.astype(np.uint8)))


def stamp(tones, size, seed):
    """A postage stamp: holes along every edge."""
    image, _ = _print(tones, size, seed)
    width, height = size

    def perforated(draw, s):
        draw.rectangle([MARGIN * s, MARGIN * s, (width - MARGIN) * s, (height - MARGIN) * s], 255)
        for length, place in ((width, lambda t, e: (t, e)), (height, lambda t, e: (e, t))):
            across = height if length == width else width
            count = round((length - 2 * MARGIN) / 17)
            for t in np.linspace(MARGIN, length - MARGIN, count + 1):
                for edge in (MARGIN, across - MARGIN):
                    x, y = place(t, edge)
                    draw.ellipse([(x - 5) * s, (y - 5) * s, (x + 5) * s, (y + 5) * s], 0)
    return _lay(image, _mask(size, perforated))


def strip(tones, size, seed):
    """Four frames side by side on a strip of film with its holes."""
    width, height = size
    roll = np.random.default_rng(seed)
    base = np.array(FILM) + 1.2 * blur(roll.normal(size=(height, width, 1)), 0.8)
    image = Image.fromarray(np.clip(base, 0, 255).astype(np.uint8), "RGB")
    for i, tone in enumerate(tones):
        place = MARGIN + GAP + i * (tone.shape[1] + GAP), MARGIN + BAND
        image.paste(_bytes(tone), place, _rectangle(tone.shape[1::-1], (0, 0, tone.shape[1], tone.shape[0]), 5))

    def holed(draw, s):
        draw.rounded_rectangle([MARGIN * s, MARGIN * s, (width - MARGIN) * s, (height - MARGIN) * s], 3 * s, 255)
        for x in np.arange(MARGIN + 14, width - MARGIN - 16, 31):
            for y in (MARGIN + 9, height - MARGIN - 9 - 20):
                draw.rounded_rectangle([x * s, y * s, (x + 15) * s, (y + 20) * s], 4 * s, 0)
    return _lay(image, _mask(size, holed))


def cutout(tones, size, seed):
    """What the picture shows, and nothing around it: `tones` are the picture and how far each pixel is covered."""
    tone, cover = tones
    sheet = Image.fromarray((np.clip(cover, 0, 1) * 255 + 0.5).astype(np.uint8))
    return _lay(_bytes(tone), sheet)


SHAPES = {"print": print_, "round": round_, "torn": torn, "stamp": stamp, "strip": strip, "cutout": cutout}


def tilted(image, degrees):
    """The image turned clockwise in a canvas that holds all of it; colours are spread under clear pixels."""
    if not degrees:
        return image
    data = np.asarray(image, np.float32) / 255
    data[..., :3] *= data[..., 3:]
    planes = [Image.fromarray(plane).rotate(-degrees, Image.BICUBIC, expand=True) for plane in np.moveaxis(data, 2, 0)]
    turned = np.clip(np.dstack([np.asarray(plane) for plane in planes]), 0, 1)
    alpha = turned[..., 3:]
    rgb = np.where(alpha > 1 / 510, turned[..., :3] / np.maximum(alpha, 1e-4), 0)
    result = Image.fromarray((np.clip(np.dstack([rgb, alpha]), 0, 1) * 255 + 0.5).astype(np.uint8), "RGBA")
    return result.crop(result.getbbox())


def scaled(tone, scale):
    """The picture made smaller."""
    if scale == 1:
        return tone
    size = round(tone.shape[1] * scale), round(tone.shape[0] * scale)
    planes = tone[..., None] if tone.ndim == 2 else tone
    resized = [Image.fromarray(plane.astype(np.float32)).resize(size, Image.LANCZOS) for plane in np.moveaxis(planes, 2, 0)]
    return np.clip(np.dstack(resized), 0, 1).reshape(size[1], size[0], *tone.shape[2:])


def mount(shape, tones, scale, tilt, seed):
    """The pictures on their paper, which is as large as they ask for."""
    tones = [scaled(tone, scale) for tone in tones]
    return tilted(SHAPES[shape](tones, paper_size(shape, tones[0].shape[1], tones[0].shape[0]), seed), tilt)
