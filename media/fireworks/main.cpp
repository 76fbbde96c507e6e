// Makes the fireworks: `make-fireworks CLIP` writes the clip by way of ffmpeg, `make-fireworks beginning
// SECONDS CLIP` its beginning, `make-fireworks picture SECOND FILE` one picture of it (PPM), `make-fireworks
// sound FILE` its sound (WAV).
#include "Painter.h"
#include "Score.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

namespace {

using namespace fireworks;

// A group of pictures is short, so that a dropped one does not harm for long.
constexpr const char *kEncoding =
    " -map 0:v -map 1:a -c:v mpeg1video -threads 1 -g 12 -bf 2 -b:v 3000k -maxrate 5000k -bufsize 2400k "
    "-qmin 2"
    " -c:a mp2 -b:a 192k -fflags +bitexact -flags:v +bitexact -flags:a +bitexact -map_metadata -1"
    " -muxrate 6000k -f mpeg ";

std::string Quoted(const std::string &text)
{
    std::string quoted = "'";
    for (const char letter : text) {
        if (letter == '\'')
            quoted += "'\\''";
        else
            quoted += letter;
    }
    return quoted + "'";
}

void WritePicture(double second, const std::string &file)
{
    std::ofstream out(file, std::ios::binary);
    const auto picture = Painter().Picture(second);
    out << "P6\n" << kWidth << ' ' << kHeight << "\n255\n";
    out.write(reinterpret_cast<const char *>(picture.data()), std::streamsize(picture.size()));
    if (!out.flush())
        throw std::runtime_error("cannot write " + file);
}

void WriteClip(const std::string &file, double seconds)
{
    const std::string sound = file + ".wav";
    WriteSound(sound);
    const std::string command = "ffmpeg -nostdin -loglevel error -y -f rawvideo -pix_fmt rgb24 -s " +
                                std::to_string(kWidth) + "x" + std::to_string(kHeight) + " -r " +
                                std::to_string(kPicturesPerSecond) + " -i pipe:0 -i " + Quoted(sound) +
                                " -t " + std::to_string(seconds) + kEncoding + Quoted(file);
    std::FILE *encoder = popen(command.c_str(), "w");
    if (!encoder)
        throw std::runtime_error("cannot start ffmpeg");
    // Two painters, each of every second picture.
    Painter even, odd;
    bool written = true;
    const int count = int(seconds * kPicturesPerSecond);
    for (int number = 0; number < count && written; number += 2) {
        std::vector<std::uint8_t> second;
        std::thread other([&] { second = odd.Picture(double(number + 1) / kPicturesPerSecond); });
        const auto first = even.Picture(double(number) / kPicturesPerSecond);
        other.join();
        written = std::fwrite(first.data(), 1, first.size(), encoder) == first.size() &&
                  std::fwrite(second.data(), 1, second.size(), encoder) == second.size();
    }
    const bool encoded = pclose(encoder) == 0;
    std::remove(sound.c_str());
    if (!written || !encoded) {
        std::remove(file.c_str());
        throw std::runtime_error("ffmpeg could not make " + file);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        if (argc == 4 && std::string_view(argv[1]) == "picture")
            WritePicture(std::atof(argv[2]), argv[3]);
        else if (argc == 3 && std::string_view(argv[1]) == "sound")
            WriteSound(argv[2]);
        else if (argc == 4 && std::string_view(argv[1]) == "beginning")
            WriteClip(argv[3], std::atof(argv[2]));
        else if (argc == 2)
            WriteClip(argv[1], kSeconds);
        else
            throw std::runtime_error(
                "make-fireworks CLIP | beginning SECONDS CLIP | picture SECOND FILE | sound FILE");
    } catch (const std::exception &failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
