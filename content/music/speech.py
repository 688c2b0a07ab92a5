"""Speech for the vocoder: espeak-ng says a line, and every vowel's place in it is known.

espeak-ng is called through its C library, because only the library tells when each phoneme begins. The voice is
kept on one constant pitch: the vocoder, or the retuned dry voice, gives it the melody.
"""
import ctypes

import numpy

RATE = 44100                    # of everything that leaves this module; espeak-ng speaks at half of it
SYNCHRONOUS, PHONEME_EVENTS_IPA = 2, 3
EVENT_PHONEME = 7
PARAMETER_RATE, PARAMETER_PITCH, PARAMETER_RANGE, PARAMETER_GAP = 1, 3, 4, 7
UTF8_WITH_PHONEMES = 0x0001 | 0x0100   # text may hold [[phonemes]]
VOWELS = set("aeiouæɑɒɔəɚɛɜɪʊʌɐᵻɨɵoɹ̩")


class Event(ctypes.Structure):
    """One espeak_EVENT of espeak-ng's speak_lib.h; `name` is the union that holds up to 8 bytes of IPA."""
    _fields_ = [("type", ctypes.c_int), ("identifier", ctypes.c_uint), ("text_position", ctypes.c_int),
                ("length", ctypes.c_int), ("milliseconds", ctypes.c_int), ("sample", ctypes.c_int),
                ("user_data", ctypes.c_void_p), ("name", ctypes.c_char * 8)]


CALLBACK = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.POINTER(ctypes.c_short), ctypes.c_int, ctypes.POINTER(Event))


class Speaker:
    """One voice of espeak-ng. `speed` is in words a minute, `pitch` 0 to 99 in espeak-ng's own scale."""

    def __init__(self, voice, speed, pitch):
        self.library = ctypes.CDLL("libespeak-ng.so.1")
        self.own_rate = self.library.espeak_Initialize(SYNCHRONOUS, 0, None, PHONEME_EVENTS_IPA)
        if self.own_rate <= 0 or self.library.espeak_SetVoiceByName(voice.encode()) != 0:
            raise RuntimeError(f"espeak-ng has no voice {voice}")
        for parameter, value in ((PARAMETER_RATE, speed), (PARAMETER_PITCH, pitch), (PARAMETER_RANGE, 0)):
            self.library.espeak_SetParameter(parameter, value, 0)
        self.callback = CALLBACK(self._collect)     # kept: the library holds only the bare pointer
        self.library.espeak_SetSynthCallback(self.callback)

    def say(self, text):
        """The line as floats at RATE, and its phonemes as (seconds, IPA), the closing silence included."""
        self.samples, self.phonemes = [], []
        data = text.encode()
        self.library.espeak_Synth(data, len(data) + 1, 0, 1, 0, UTF8_WITH_PHONEMES, None, None)
        spoken = numpy.concatenate(self.samples) / 32768.0
        return resample(spoken, self.own_rate), self.phonemes

    def _collect(self, wave, count, events):
        if wave and count > 0:
            self.samples.append(numpy.ctypeslib.as_array(wave, (count,)).astype(float))
        index = 0
        while events[index].type != 0:
            if events[index].type == EVENT_PHONEME:
                self.phonemes.append((events[index].sample / self.own_rate, events[index].name.decode("utf-8", "ignore")))
            index += 1
        return 0


def resample(samples, rate):
    """Band-limited change to RATE through the spectrum; right for whole, short lines."""
    count = int(round(len(samples) * RATE / rate))
    spectrum = numpy.fft.rfft(samples)
    wide = numpy.zeros(count // 2 + 1, complex)
    wide[:min(len(wide), len(spectrum))] = spectrum[:len(wide)]
    return numpy.fft.irfft(wide, count) * (count / len(samples))


def is_vowel(ipa):
    letters = [c for c in ipa if c not in "ˈˌːʲ ̩"]
    return bool(letters) and letters[0] in VOWELS - {"ɹ"} or "̩" in ipa
