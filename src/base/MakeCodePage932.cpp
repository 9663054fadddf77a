// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Build-time generator: writes the system converter's table of code page 932 to the file named by its argument, one
// line {code, character} per code; a two-byte code is lead * 256 + trail. Some characters have several codes. The one
// that the converter itself writes comes last, so entering the lines in order leaves that one in place.
#include <cstdio>
#include <iconv.h>
#include <vector>

namespace {

const iconv_t NoConverter = reinterpret_cast<iconv_t>(-1);

/// @return bytes written to output; 0 if the converter rejects the input
size_t Convert(iconv_t converter, std::vector<unsigned char> input, unsigned char *output, size_t outputBytes)
{
    auto *in = reinterpret_cast<char *>(input.data());
    auto *out = reinterpret_cast<char *>(output);
    size_t inLeft = input.size();
    size_t outLeft = outputBytes;
    if (iconv(converter, &in, &inLeft, &out, &outLeft) == 0)
        return outputBytes - outLeft;
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    return 0;
}

// Bytes that some converters map to private characters and others reject.
bool IsUnassignedSingle(unsigned byte)
{
    return byte == 0x80 || byte == 0xA0 || byte >= 0xFD;
}

bool IsLead(unsigned byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

std::vector<unsigned> Codes()
{
    std::vector<unsigned> codes;
    for (unsigned byte = 0; byte <= 0xFF; ++byte)
        if (!IsLead(byte) && !IsUnassignedSingle(byte))
            codes.push_back(byte);
    for (unsigned lead = 0x81; lead <= 0xFC; ++lead)
        for (unsigned trail = 0x40; trail <= 0xFC; ++trail)
            if (IsLead(lead) && trail != 0x7F)
                codes.push_back(lead << 8 | trail);
    return codes;
}

void PrintLines(iconv_t decoder, iconv_t encoder, bool ofPreferredCodes)
{
    for (const unsigned code : Codes()) {
        std::vector<unsigned char> bytes;
        if (code > 0xFF)
            bytes.push_back(static_cast<unsigned char>(code >> 8));
        bytes.push_back(static_cast<unsigned char>(code));
        unsigned char character[8];
        if (Convert(decoder, bytes, character, sizeof character) != 2)
            continue;
        unsigned char written[8];
        const size_t count = Convert(encoder, {character[0], character[1]}, written, sizeof written);
        const bool isPreferred = std::vector<unsigned char>(written, written + count) == bytes;
        if (isPreferred == ofPreferredCodes)
            std::printf("{0x%04X, 0x%02X%02X},\n", code, character[0], character[1]);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2 || !std::freopen(argv[1], "w", stdout)) {
        std::fputs("usage: MakeCodePage932 OUTPUT\n", stderr);
        return 2;
    }
    const iconv_t decoder = iconv_open("UTF-16BE", "CP932");
    const iconv_t encoder = iconv_open("CP932", "UTF-16BE");
    if (decoder == NoConverter || encoder == NoConverter) {
        std::fputs("iconv does not support code page 932\n", stderr);
        return 1;
    }
    PrintLines(decoder, encoder, false);
    PrintLines(decoder, encoder, true);
    iconv_close(decoder);
    iconv_close(encoder);
    return std::fclose(stdout) == 0 ? 0 : 1;
}
