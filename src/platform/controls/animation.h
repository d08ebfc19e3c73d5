// Plays a film of uncompressed pictures, over and over.
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>

#include "platform/controls/avi_file.h"

// The picture stands in the middle, as many whole times enlarged as there is room for; smaller only where
// there is not room enough for it.
class Animation : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool AutoPlay READ AutoPlay WRITE AutoPlay)
 public:
    explicit Animation(QWidget* parent = nullptr);

    // Whether a film plays as soon as it is opened.
    bool AutoPlay() const { return m_autoPlay; }
    void AutoPlay(bool on) { m_autoPlay = on; }

    // Shows the first picture. The path is the system's. 53 "File not found", 76 for a drive or folder that
    // is not there, 75 for a file that cannot be read, 35752 for one that is no such film; what was open is
    // closed then.
    void Open(const std::string& path);
    void Play();  // 91 while nothing is open
    void Stop();  // stays at the picture that is shown
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
