// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/image_list.h"

#include <QIconEngine>
#include <QPainter>

namespace {

// Shows one picture for selected items and another for the others, both in their own colours: styles would
// tint the picture of a selected item with the selection's colour.
class ItemPicture : public QIconEngine {
 public:
    ItemPicture(QIcon normal, QIcon selected)
        : m_normal(std::move(normal)), m_selected(std::move(selected)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
        Of(mode).paint(painter, place, Qt::AlignCenter, Drawn(mode), state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Of(mode).pixmap(size, 1.0, Drawn(mode), state);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override {
        return pixmap(size, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Of(mode).actualSize(size, Drawn(mode), state);
    }
    bool isNull() override { return m_normal.isNull(); }
    QIconEngine* clone() const override { return new ItemPicture(m_normal, m_selected); }

 private:
    const QIcon& Of(QIcon::Mode mode) const { return mode == QIcon::Selected ? m_selected : m_normal; }
    static QIcon::Mode Drawn(QIcon::Mode mode) {
        return mode == QIcon::Disabled ? QIcon::Disabled : QIcon::Normal;
    }
    QIcon m_normal, m_selected;
};

}  // namespace

void ImageList::Add(int number, const std::string& resource) {
    const QIcon picture(QString::fromStdString(resource));
    m_images[number] = QIcon(new ItemPicture(picture, picture));
}

QIcon ImageList::Image(int number, int selected) const {
    const auto found = m_images.find(number);
    if (found == m_images.end()) {
        return {};
    }
    const auto other = m_images.find(selected);
    return other == m_images.end() ? found->second : QIcon(new ItemPicture(found->second, other->second));
}
