// MP3 files through the decoder, from a file in memory.
//
// Promises: what opens has a rate; decoding ends, with no more music than the file has room for;
// after a rewind the same music comes again.

#include "fuzz/Fuzz.h"
#include "fuzz/MemoryFile.h"
#include "sound/SoundDecoder.h"

#include <array>

namespace
{
const size_t blockFrames = 2048;

// The shortest frame has 24 bytes and 1152 samples; some more come out of the decoder's own delay.
size_t MostFrames(size_t bytes) { return (bytes / 24 + 8) * 1152; }

struct cMusic
{
    size_t mFrames = 0;
    uint64_t mSum = 0;

    bool operator==(const cMusic &) const = default;
};

cMusic DecodeAll(vyr::SoundDecoder &decoder, size_t most)
{
    cMusic music;
    std::array<int16_t, 2 * blockFrames> block;
    while (const size_t frames = decoder.Read(block.data(), blockFrames)) {
        FUZZ_EXPECT(frames <= blockFrames);
        for (size_t i = 0; i < 2 * frames; i++)
            music.mSum = music.mSum * 31 + uint64_t(block[i]);
        music.mFrames += frames;
        FUZZ_EXPECT(music.mFrames <= most);
    }
    FUZZ_EXPECT(decoder.Read(block.data(), blockFrames) == 0); // the end stays the end
    return music;
}
} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static fuzz::cMemoryFile file;
    file.Write(data, size);
    std::unique_ptr<vyr::SoundDecoder> decoder;
    const FMOD_RESULT result = vyr::SoundDecoder::Open(file.Path().c_str(), decoder);
    FUZZ_EXPECT((result == FMOD_OK) == (decoder != nullptr));
    if (!decoder)
        return 0;
    FUZZ_EXPECT(decoder->GetRate() > 0);
    const cMusic music = DecodeAll(*decoder, MostFrames(size));
    if (decoder->Rewind())
        FUZZ_EXPECT(DecodeAll(*decoder, MostFrames(size)).mFrames <= MostFrames(size));
    FUZZ_EXPECT(music.mFrames <= MostFrames(size));
    return 0;
}
