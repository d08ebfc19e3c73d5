// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/animation.h"

#include <QPainter>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"

namespace {

namespace fs = std::filesystem;

// ReadPictureFile of the designer reads a file as well, and says why not in words of its own: here a failure
// has the number that the form which plays the film knows.
std::string BytesOf(const std::string& path) {
    constexpr std::uintmax_t LargestFile = 64 << 20;
    const fs::path file = paths::ToMachine(path);
    const std::string named = ": \"" + paths::ForUser(path) + "\"";
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        const bool folder = fs::is_directory(fs::absolute(file, error).parent_path(), error);
        const std::int32_t number = folder ? err::FileNotFound : err::PathNotFound;
        throw RuntimeError(number, RuntimeError(number).Description() + named);
    }
    if (fs::file_size(file, error) > LargestFile) {
        throw RuntimeError(err::NoAnimation, "The animation is too large" + named);
    }
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad()) {
        throw RuntimeError(err::PathFileAccess, RuntimeError(err::PathFileAccess).Description() + named);
    }
    return bytes;
}

}  // namespace

Animation::Animation(QWidget* parent) : QWidget(parent) {
    connect(&m_next, &QTimer::timeout, this, [this] { Show((m_frame + 1) % m_film->FrameCount()); });
}

void Animation::Open(const std::string& path) {
    Close();
    m_film.emplace(BytesOf(path));
    m_next.setInterval(std::chrono::duration_cast<std::chrono::milliseconds>(m_film->FrameTime()));
    Show(0);
    updateGeometry();
    if (m_autoPlay) {
        Play();
    }
}

void Animation::Play() {
    if (!m_film) {
        throw RuntimeError(err::ObjectNotSet);
    }
    m_next.start();
}

void Animation::Stop() {
    m_next.stop();
}

void Animation::Close() {
    Stop();
    m_film.reset();
    m_picture = QImage();
    updateGeometry();
    update();
}

void Animation::Show(int frame) {
    const std::vector<std::uint32_t> pixels = m_film->Frame(frame);
    QImage picture(m_film->Width(), m_film->Height(), QImage::Format_RGB32);
    std::memcpy(picture.bits(), pixels.data(), pixels.size() * sizeof(pixels[0]));
    m_picture = picture;
    m_frame = frame;
    update();
}

QSize Animation::sizeHint() const {
    return m_picture.size();
}

void Animation::paintEvent(QPaintEvent*) {
    if (m_picture.isNull()) {
        return;
    }
    QPainter painter(this);
    const int times = std::min(width() / m_picture.width(), height() / m_picture.height());
    QSize size = m_picture.size() * times;
    if (times == 0) {
        size = m_picture.size().scaled(rect().size(), Qt::KeepAspectRatio);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    }
    QRect place({}, size);
    place.moveCenter(rect().center());
    painter.drawImage(place, m_picture);
}
