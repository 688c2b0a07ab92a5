"""The darkroom: turns a rendered scene (Radiance RGBE, linear light) into a print with a border (RGBA)."""

import numpy as np
from PIL import Image, ImageChops, ImageDraw, ImageFilter

MARGIN = 10             # transparent pixels around the paper, so that a turned sprite has soft edges
BORDER = 18             # paper left, right and above the picture
FOOT = 44               # paper below it, like an instant photo
PAPER = (247, 241, 228)
SUPERSAMPLE = 4         # the paper's outline is drawn larger and scaled down


def picture_size(width, height):
    """Size of the picture inside a print whose file is width x height pixels."""
    return width - 2 * (MARGIN + BORDER), height - 2 * MARGIN - BORDER - FOOT


def read_rgbe(path):
    """Linear RGB of a Radiance picture as float32, height x width x 3, rows top down."""
    data = open(path, "rb").read()
    head = data.index(b"\n\n") + 2
    end = data.index(b"\n", head)
    _, height, _, width = data[head:end].split()
    rows, at = [], end + 1
    for _ in range(int(height)):
        row, at = _read_row(data, at, int(width))
        rows.append(row)
    rgbe = np.stack(rows).astype(np.float32)
    return rgbe[..., :3] * np.exp2(rgbe[..., 3:] - 136.0)


def _read_row(data, at, width):
    if not (data[at] == 2 and data[at + 1] == 2 and data[at + 2] < 128):        # stored flat
        flat = np.frombuffer(data, np.uint8, width * 4, at)
        return flat.reshape(width, 4), at + width * 4
    at += 4
    planes = np.empty((4, width), np.uint8)
    for plane in planes:
        x = 0
        while x < width:
            count = data[at]
            if count > 128:                                                     # a run of one value
                plane[x:x + count - 128] = data[at + 1]
                x, at = x + count - 128, at + 2
            else:
                plane[x:x + count] = np.frombuffer(data, np.uint8, count, at + 1)
                x, at = x + count, at + 1 + count
    return planes.T, at


def _blur(image, radius):
    """Gaussian blur of a float picture, mirrored at the edges."""
    reach = max(1, int(radius * 3))
    weights = np.exp(-0.5 * (np.arange(-reach, reach + 1) / radius) ** 2)
    weights /= weights.sum()
    for axis in (0, 1):
        pad = [(0, 0)] * image.ndim
        pad[axis] = (reach, reach)
        padded = np.pad(image, pad, mode="symmetric")
        length = image.shape[axis]
        image = sum(w * np.take(padded, range(i, i + length), axis) for i, w in enumerate(weights))
    return image


def develop(light, look, seed):
    """Film: halation, filmic curve, split toning, vignette, grain. Gives display values 0..1.
    `look` holds exposure (factor), warmth (-1..1), bloom, vignette, grain, fade and contrast (1 is plain)."""
    height, width = light.shape[:2]
    light = np.minimum(light, 24.0) * look["exposure"]
    bright = np.maximum(light - 0.9, 0.0)
    light = light + look["bloom"] * (0.10 * _blur(bright, 3.0)
                                     + 0.10 * _blur(bright, 13.0) * np.array([1.2, 0.75, 0.5]))
    light = light * np.array([1 + 0.16 * look["warmth"], 1 + 0.02 * look["warmth"], 1 - 0.20 * look["warmth"]])
    y, x = np.mgrid[0:height, 0:width]
    corner = ((x / (width - 1) - 0.5) ** 2 + (y / (height - 1) - 0.5) ** 2) * 2
    light = light * (1 - 0.55 * look["vignette"] * corner[..., None] ** 1.4)
    light = light + 0.09 * ((light @ np.array([0.3, 0.59, 0.11]))[..., None] - light)   # dyes are never pure
    curve = light * (2.51 * light + 0.03) / (light * (2.43 * light + 0.59) + 0.14)
    tone = np.clip(curve, 0, 1) ** (1 / 2.2)
    tone = 0.5 + (tone - 0.5) * look["contrast"]
    grey = tone @ np.array([0.3, 0.59, 0.11])
    shade = np.clip(1 - grey, 0, 1)[..., None] ** 2
    shine = np.clip(grey, 0, 1)[..., None] ** 2
    tone = tone + look["fade"] * (shade * np.array([0.012, 0.030, 0.036]) + shine * np.array([0.010, 0.000, -0.040]))
    roll = np.random.default_rng(seed)
    # One grain for the three layers and a little of each layer's own; strongest in the middle tones.
    grain = _blur(roll.normal(size=(height, width, 1)), 0.55) * 1.6 + _blur(roll.normal(size=(height, width, 3)), 0.6) * 0.6
    tone = tone + look["grain"] * 0.0115 * grain * (0.45 + 2.2 * np.clip(grey * (1 - grey), 0, 1))[..., None]
    return np.clip(tone, 0, 1)


def _outline(size, box, radius):
    """A rounded rectangle as an antialiased mask."""
    s = SUPERSAMPLE
    mask = Image.new("L", (size[0] * s, size[1] * s), 0)
    ImageDraw.Draw(mask).rounded_rectangle([box[0] * s, box[1] * s, box[2] * s - 1, box[3] * s - 1], radius * s, 255)
    return mask.resize(size, Image.LANCZOS)


def mount(tone, width, height, seed):
    """Lays the developed picture on its paper, with a drop shadow in the margin. Gives an RGBA image."""
    size = (width, height)
    sheet = _outline(size, (MARGIN, MARGIN, width - MARGIN, height - MARGIN), 5)
    shadow = ImageChops.offset(sheet.filter(ImageFilter.GaussianBlur(3.2)), 1, 2).point(lambda v: int(v * 0.42))
    fibre = np.random.default_rng(seed + 1).normal(size=(height, width, 1))
    paper = np.array(PAPER) + 1.6 * _blur(fibre, 0.7)
    # Old paper: a shade darker towards its edges.
    edge = np.minimum.reduce([*np.mgrid[0:height, 0:width], *np.mgrid[0:height, 0:width][:, ::-1, ::-1]]) - MARGIN
    paper = paper - 10 * np.exp(-np.maximum(edge, 0) / 7.0)[..., None] * np.array([0.6, 1.0, 1.6])
    left, top = MARGIN + BORDER, MARGIN + BORDER
    inner = (left, top, left + tone.shape[1], top + tone.shape[0])
    image = Image.fromarray(np.clip(paper, 0, 255).astype(np.uint8), "RGB")
    # The paper is stamped in around the picture: a dark hairline on one side, a light one on the other.
    draw = ImageDraw.Draw(image)
    draw.rectangle([inner[0] - 1, inner[1] - 1, inner[2], inner[3]], outline=(214, 205, 188))
    picture = Image.new("RGB", size)
    picture.paste(Image.fromarray((tone * 255 + 0.5).astype(np.uint8), "RGB"), inner[:2])
    image.paste(picture, (0, 0), _outline(size, inner, 3))
    return _over_shadow(np.asarray(image, float), np.asarray(sheet, float) / 255, np.asarray(shadow, float) / 255)


def _over_shadow(colour, sheet, shadow):
    """Straight alpha: the sheet over a black shadow. Clear pixels keep the paper's colour, for soft filtering."""
    alpha = sheet + shadow * (1 - sheet)
    share = np.where(alpha > 0, sheet / np.maximum(alpha, 1e-6), 0)[..., None]
    rgb = np.where(alpha[..., None] > 0, colour * share, 0)
    rgba = np.dstack([rgb, alpha * 255])
    return Image.fromarray((rgba + 0.5).astype(np.uint8), "RGBA")
