"""Sound files and loudness, for master.py and measure. Sounds are float arrays of (samples, channels)."""
import struct
import wave

import numpy

RATE = 44100
# The standard for loudness (ITU-R BS.1770) gives its two filters as numbers for 48 kHz; these are the frequencies, gain
# (dB) and qualities behind them, from which k_response computes the same filters for RATE.
SHELF = (1681.9744509555319, 3.99984385397, 0.7071752369554193)
HIGH_PASS = (38.13547087613982, 0.5003270373253953)
GATE_ABSOLUTE, GATE_RELATIVE = -70.0, -10.0


def read_floats(path):
    """A WAV file of 32-bit floats, as Csound writes it, mapped and not copied."""
    with open(path, "rb") as file:
        head = file.read(65536)
    place = 12
    while head[place:place + 4] != b"data":
        if head[place:place + 4] == b"fmt ":
            channels, = struct.unpack_from("<H", head, place + 10)
        size, = struct.unpack_from("<I", head, place + 4)
        place += 8 + size + size % 2
    return numpy.memmap(path, "<f4", "r", place + 8).reshape(-1, channels)


def write_24_bit(path, sound):
    """A WAV file of 24-bit integers, because lame takes floats for louder than they are."""
    whole = numpy.round(numpy.clip(sound, -1, 1 - 2 ** -23) * 2 ** 23).astype("<i4")
    with wave.open(path, "wb") as file:
        file.setnchannels(sound.shape[1])
        file.setsampwidth(3)
        file.setframerate(RATE)
        file.writeframes(whole.view("u1").reshape(-1, 4)[:, :3].tobytes())


def k_response(frequencies):
    """How strongly K-weighting passes each frequency (amplitude, complex)."""
    z = numpy.exp(-2j * numpy.pi * frequencies / RATE)
    centre, gain, quality = SHELF
    k, v = numpy.tan(numpy.pi * centre / RATE), 10 ** (gain / 20)
    bend = v ** 0.4996667741545416 * k / quality
    b = (v + bend + k * k, 2 * (k * k - v), v - bend + k * k)
    a = (1 + k / quality + k * k, 2 * (k * k - 1), 1 - k / quality + k * k)
    response = (b[0] + b[1] * z + b[2] * z * z) / (a[0] + a[1] * z + a[2] * z * z)
    centre, quality = HIGH_PASS
    k = numpy.tan(numpy.pi * centre / RATE)
    a = (1 + k / quality + k * k, 2 * (k * k - 1), 1 - k / quality + k * k)
    return response * (1 - 2 * z + z * z) / (a[0] + a[1] * z + a[2] * z * z)


def filtered(channel, response):
    """One channel through a frequency response (a function of an array of Hz), with room for its tail."""
    count = 1 << int(numpy.ceil(numpy.log2(len(channel) + RATE)))
    spectrum = numpy.fft.rfft(channel, count)
    spectrum *= response(numpy.arange(len(spectrum)) * (RATE / count))
    return numpy.fft.irfft(spectrum, count)[:len(channel)]


def block_power(sound, step=0.1):
    """K-weighted power of each `step` seconds, channels summed."""
    size = int(step * RATE)
    count = len(sound) // size
    power = numpy.zeros(count)
    for channel in range(sound.shape[1]):
        weighted = filtered(sound[:, channel], k_response)
        power += numpy.mean(weighted[:count * size].reshape(count, size) ** 2, axis=1)
    return power


def lufs(power):
    return -0.691 + 10 * numpy.log10(numpy.maximum(power, 1e-12))


def integrated(power):
    """Gated loudness in LUFS from block_power at 0.1 s: blocks of 0.4 s that overlap by three quarters."""
    blocks = numpy.convolve(power, numpy.full(4, 0.25), "valid")
    loud = blocks[lufs(blocks) > GATE_ABSOLUTE]
    return float(lufs(numpy.mean(loud[lufs(loud) > lufs(numpy.mean(loud)) + GATE_RELATIVE])))


def true_peaks(channel):
    """For each sample the largest magnitude of the wave around it, at four points a sample."""
    taps = 32
    peaks = numpy.abs(channel)
    for phase in (0.25, 0.5, 0.75):
        position = numpy.arange(-taps // 2 + 1, taps // 2 + 1) - phase
        kernel = numpy.sinc(position) * numpy.kaiser(taps, 6)
        between = numpy.abs(numpy.convolve(channel, kernel[::-1]))[taps // 2 - 1:][:len(channel)]
        peaks = numpy.maximum(peaks, between)
    return peaks
