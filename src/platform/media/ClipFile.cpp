#include "platform/media/ClipFile.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace platform {

namespace {

using std::chrono::microseconds;
using namespace std::chrono_literals;

constexpr int kSoundRate = 48000;
constexpr int kSoundChannels = 2;
constexpr qsizetype kBytesASecond = kSoundRate * kSoundChannels * 2;
constexpr qsizetype kLongestSound = 600 * kBytesASecond;
constexpr int kLargestSide = 8192;
// A damaged clip may claim that its next picture comes at any time.
constexpr microseconds kLongestGap = 1s;
constexpr AVRational kMicroseconds{ 1, 1'000'000 };

// Deletes what libav makes.
struct Free {
    void operator()(AVFormatContext *file) const { avformat_close_input(&file); }
    void operator()(AVCodecContext *decoder) const { avcodec_free_context(&decoder); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *scaler) const { sws_freeContext(scaler); }
    void operator()(SwrContext *converter) const { swr_free(&converter); }
};
template <class Thing>
using Owned = std::unique_ptr<Thing, Free>;

int ShallStop(void *stop)
{
    return *static_cast<const std::atomic<bool> *>(stop) ? 1 : 0;
}

// The stream's decoder, ready; null when there is none for it.
Owned<AVCodecContext> DecoderOf(const AVStream &stream)
{
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    if (!codec)
        return nullptr;
    Owned<AVCodecContext> decoder(avcodec_alloc_context3(codec));
    if (!decoder || avcodec_parameters_to_context(decoder.get(), stream.codecpar) < 0)
        return nullptr;
    decoder->thread_count = 1;
    decoder->pkt_timebase = stream.time_base;
    if (avcodec_open2(decoder.get(), codec, nullptr) < 0)
        return nullptr;
    return decoder;
}

} // namespace

class ClipFile::Parts {
public:
    explicit Parts(const std::atomic<bool> &stop) : m_stop(stop) {}

    bool Open(const QString &path)
    {
        // Pipes and devices would be waited for.
        if (!QFileInfo(path).isFile())
            return false;
        AVFormatContext *opened = avformat_alloc_context();
        if (!opened)
            return false;
        opened->interrupt_callback = { &ShallStop, const_cast<std::atomic<bool> *>(&m_stop) };
        AVDictionary *options = nullptr;
        av_dict_set(&options, "protocol_whitelist", "file", 0);
        const QByteArray address = "file:" + QFile::encodeName(path);
        const int result = avformat_open_input(&opened, address.constData(), nullptr, &options);
        av_dict_free(&options);
        if (result < 0)
            return false; // it has freed the context
        m_file.reset(opened);
        if (avformat_find_stream_info(m_file.get(), nullptr) < 0)
            return false;
        m_pictures = av_find_best_stream(m_file.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
        m_sound = av_find_best_stream(m_file.get(), AVMEDIA_TYPE_AUDIO, -1, m_pictures, nullptr, 0);
        m_frame.reset(av_frame_alloc());
        m_packet.reset(av_packet_alloc());
        return m_pictures >= 0 && m_frame && m_packet;
    }

    std::optional<Frame> NextFrame(const std::function<QSize(QSize)> &fit)
    {
        if (!Begin(m_pictures))
            return std::nullopt;
        while (Decode(m_pictures)) {
            QImage image = Converted(fit);
            if (image.isNull())
                continue;
            const auto at = m_lastAt ? NextTime() : 0us;
            m_lastAt = at;
            return Frame{ std::move(image), at };
        }
        return std::nullopt;
    }

    microseconds FrameLength() const
    {
        const AVRational rate = av_guess_frame_rate(m_file.get(), m_file->streams[m_pictures], nullptr);
        const double perSecond = rate.num > 0 && rate.den > 0 ? av_q2d(rate) : 25;
        return microseconds(qint64(1e6 / std::clamp(perSecond, 1.0, 240.0)));
    }

    std::shared_ptr<const Utterance> AllSound()
    {
        if (m_sound < 0 || !Begin(m_sound))
            return nullptr;
        auto sound = std::make_shared<Utterance>();
        sound->sampleRate = kSoundRate;
        sound->channels = kSoundChannels;
        while (sound->samples.size() < kLongestSound && Decode(m_sound)) {
            if (sound->samples.isEmpty())
                sound->samples = QByteArray(Lead() * kSoundChannels * 2, '\0');
            AppendSound(sound->samples);
        }
        return sound->samples.isEmpty() ? nullptr : sound;
    }

private:
    bool Begin(int stream)
    {
        if (!m_decoder)
            m_decoder = DecoderOf(*m_file->streams[stream]);
        return m_decoder != nullptr;
    }

    // The next frame of that stream into m_frame; false at the end. What is damaged is stepped over.
    bool Decode(int stream)
    {
        while (!m_stop) {
            const int result = avcodec_receive_frame(m_decoder.get(), m_frame.get());
            if (result == 0)
                return true;
            if (result == AVERROR_EOF)
                return false;
            if (result != AVERROR(EAGAIN) && ++m_faults > kMostFaults)
                return false;
            if (!Feed(stream))
                return false;
        }
        return false;
    }

    bool Feed(int stream)
    {
        while (!m_stop) {
            const int result = m_ended ? AVERROR_EOF : av_read_frame(m_file.get(), m_packet.get());
            if (result < 0) {
                // The decoder gives what it holds back, once.
                if (m_ended)
                    return false;
                m_ended = true;
                avcodec_send_packet(m_decoder.get(), nullptr);
                return true;
            }
            const bool wanted = m_packet->stream_index == stream;
            const int sent = wanted ? avcodec_send_packet(m_decoder.get(), m_packet.get()) : 0;
            av_packet_unref(m_packet.get());
            if (sent < 0 && ++m_faults > kMostFaults)
                return false;
            if (wanted)
                return true;
        }
        return false;
    }

    QImage Converted(const std::function<QSize(QSize)> &fit)
    {
        const QSize size(m_frame->width, m_frame->height);
        if (size.isEmpty() || std::max(size.width(), size.height()) > kLargestSide)
            return {};
        const QSize wanted = fit(size);
        m_scaler.reset(sws_getCachedContext(
            m_scaler.release(), size.width(), size.height(), static_cast<AVPixelFormat>(m_frame->format),
            wanted.width(), wanted.height(), AV_PIX_FMT_BGRA, SWS_BILINEAR, nullptr, nullptr, nullptr));
        QImage image(wanted, QImage::Format_RGB32);
        if (!m_scaler || image.isNull())
            return {};
        std::uint8_t *rows[] = { image.bits() };
        const int strides[] = { static_cast<int>(image.bytesPerLine()) };
        sws_scale(m_scaler.get(), m_frame->data, m_frame->linesize, 0, size.height(), rows, strides);
        return image;
    }

    // The time of the frame, which is not the first.
    microseconds NextTime()
    {
        const auto expected = *m_lastAt + FrameLength();
        const auto stamp = Stamp(*m_frame, m_pictures);
        if (!stamp)
            return expected;
        const auto at = *stamp - StartOf(m_pictures) + m_shift;
        if (at > *m_lastAt && at - *m_lastAt <= kLongestGap)
            return at;
        m_shift += expected - at;
        return expected;
    }

    std::optional<microseconds> Stamp(const AVFrame &frame, int stream) const
    {
        if (frame.best_effort_timestamp == AV_NOPTS_VALUE)
            return std::nullopt;
        return microseconds(
            av_rescale_q(frame.best_effort_timestamp, m_file->streams[stream]->time_base, kMicroseconds));
    }

    microseconds StartOf(int stream) const
    {
        const AVStream &of = *m_file->streams[stream];
        return of.start_time == AV_NOPTS_VALUE
                   ? 0us
                   : microseconds(av_rescale_q(of.start_time, of.time_base, kMicroseconds));
    }

    // Samples of silence before a sound that begins later than the pictures.
    qsizetype Lead() const
    {
        const auto late = std::clamp(StartOf(m_sound) - StartOf(m_pictures), 0us, microseconds(kLongestGap));
        return late.count() * kSoundRate / 1'000'000;
    }

    void AppendSound(QByteArray &samples)
    {
        if (!m_converter) {
            AVChannelLayout out = AV_CHANNEL_LAYOUT_STEREO;
            SwrContext *made = nullptr;
            if (swr_alloc_set_opts2(&made, &out, AV_SAMPLE_FMT_S16, kSoundRate, &m_frame->ch_layout,
                                    static_cast<AVSampleFormat>(m_frame->format), m_frame->sample_rate, 0,
                                    nullptr) < 0 ||
                swr_init(made) < 0) {
                swr_free(&made);
                return;
            }
            m_converter.reset(made);
            m_rate = m_frame->sample_rate;
            m_channels = m_frame->ch_layout.nb_channels;
            m_format = m_frame->format;
        }
        // The converter reads what the first frame had; in a damaged clip another may have less. The decoder
        // cannot be asked: it goes along with the frames.
        if (m_frame->sample_rate != m_rate || m_frame->ch_layout.nb_channels != m_channels ||
            m_frame->format != m_format)
            return;
        const int most = swr_get_out_samples(m_converter.get(), m_frame->nb_samples);
        if (most <= 0)
            return;
        QByteArray converted(qsizetype(most) * kSoundChannels * 2, Qt::Uninitialized);
        auto *into = reinterpret_cast<std::uint8_t *>(converted.data());
        const int count =
            swr_convert(m_converter.get(), &into, most,
                        const_cast<const std::uint8_t **>(m_frame->extended_data), m_frame->nb_samples);
        if (count > 0)
            samples.append(converted.constData(), qsizetype(count) * kSoundChannels * 2);
    }

    static constexpr int kMostFaults = 1000;

    const std::atomic<bool> &m_stop;
    Owned<AVFormatContext> m_file;
    Owned<AVCodecContext> m_decoder;
    Owned<AVFrame> m_frame;
    Owned<AVPacket> m_packet;
    Owned<SwsContext> m_scaler;
    Owned<SwrContext> m_converter;
    // Of the frames that the converter takes.
    int m_rate = 0;
    int m_channels = 0;
    int m_format = 0;
    int m_pictures = -1;
    int m_sound = -1;
    int m_faults = 0;
    bool m_ended = false;
    std::optional<microseconds> m_lastAt;
    microseconds m_shift{ 0 };
};

ClipFile::ClipFile(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

ClipFile::~ClipFile() = default;

std::unique_ptr<ClipFile> ClipFile::Open(const QString &path, const std::atomic<bool> &stop)
{
    av_log_set_level(AV_LOG_QUIET);
    auto parts = std::make_unique<Parts>(stop);
    if (!parts->Open(path))
        return nullptr;
    return std::unique_ptr<ClipFile>(new ClipFile(std::move(parts)));
}

std::optional<ClipFile::Frame> ClipFile::NextFrame(const std::function<QSize(QSize)> &fit)
{
    return m_parts->NextFrame(fit);
}

microseconds ClipFile::FrameLength() const
{
    return m_parts->FrameLength();
}

std::shared_ptr<const Utterance> ClipFile::AllSound()
{
    return m_parts->AllSound();
}

} // namespace platform
