// SPDX-License-Identifier: GPL-3.0-or-later
// Plays a film of uncompressed pictures in a loop.
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>

#include "platform/controls/avi_file.h"

// The picture is centred and enlarged by the largest whole factor that fits. It is reduced only if it does
// not fit at its own size.
class Animation : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool AutoPlay READ AutoPlay WRITE AutoPlay)
 public:
    explicit Animation(QWidget* parent = nullptr);

    // If true, a film starts to play when it is opened.
    bool AutoPlay() const { return m_autoPlay; }
    void AutoPlay(bool on) { m_autoPlay = on; }

    // Shows the first picture. `path` is a path of the system. Raises 53 "File not found", 76 for a missing
    // drive or folder, 75 for a file that cannot be read, 35752 for a file that is not such a film. After an
    // error no film is open.
    void Open(const std::string& path);
    void Play();  // raises 91 if no film is open
    void Stop();  // keeps showing the current picture
    void Close();

    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    void Show(int frame);

    bool m_autoPlay = false;
    std::optional<AviFile> m_film;
    int m_frame = 0;
    QImage m_picture;
    QTimer m_next;
};
