// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/chart_gallery.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "designer/document/properties/properties.h"
#include "designer/graphic_dialogs/chart_pictures.h"
#include "designer/tables/fields.h"

namespace designer {

ChartGallery::ChartGallery(bool isOlder, QWidget* parent) : QListWidget(parent) {
    setObjectName("gallery");
    setAccessibleName(tr("Type of the chart"));
    setViewMode(QListView::IconMode);
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setUniformItemSizes(true);
    setWordWrap(true);
    setIconSize({ChartPictureWidth, ChartPictureHeight});
    setSpacing(4);
    const std::vector<QPixmap>& pictures = ChartPictures(devicePixelRatioF());
    const int width = std::max(ChartPictureWidth + 12, fontMetrics().averageCharWidth() * 16);
    for (std::size_t index = 0; index < pictures.size(); ++index) {
        auto* entry =
            new QListWidgetItem(pictures[index], QString::fromUtf8(ChartTypes()[index].title), this);
        entry->setHidden(isOlder && ChartTypes()[index].olderType.empty());
        entry->setSizeHint({width, ChartPictureHeight + fontMetrics().lineSpacing() + 14});
    }
    setCurrentRow(0);
}

void ChartGallery::SetType(const ChartType* type) {
    setCurrentRow(type ? static_cast<int>(type - ChartTypes().data()) : -1);
}

const ChartType* ChartGallery::Type() const {
    return currentRow() < 0 ? nullptr : &ChartTypes()[static_cast<std::size_t>(currentRow())];
}

// Six in a row, and three rows and a half.
QSize ChartGallery::sizeHint() const {
    const QSize one = sizeHintForIndex(model()->index(0, 0)) + QSize(2, 2) * spacing();
    return {one.width() * 6 + 40, one.height() * 7 / 2};
}

NewChartDialog::NewChartDialog(const Document& document, QWidget* parent)
    : QDialog(parent),
      m_gallery(new ChartGallery(IsOlderSchema(document), this)),
      m_set(new QComboBox(this)) {
    setObjectName("newChartDialog");
    setWindowTitle(tr("New Chart"));
    m_set->setObjectName("cboDataSet");
    for (const ReportSet& set : SetsOf(document)) {
        m_set->addItem(QString::fromStdString(set.name));
    }
    auto* type = new QLabel(tr("&Type:"), this);
    type->setBuddy(m_gallery);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_gallery, &QListWidget::itemActivated, this, &QDialog::accept);
    auto* form = new QFormLayout;
    form->addRow(tr("&Data set:"), m_set);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(type);
    layout->addWidget(m_gallery, 1);
    layout->addLayout(form);
    layout->addWidget(buttons);
    m_gallery->setFocus();
    resize(sizeHint().boundedTo(screen()->availableSize() * 9 / 10));
}

GraphicChoice NewChartDialog::Choice() const {
    return {m_gallery->Type(), m_set->currentText().toStdString(), {}};
}

}  // namespace designer
