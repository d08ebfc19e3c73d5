// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/report_dialogs/pictures_dialog.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeDatabase>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "designer/dialogs/note.h"
#include "designer/document/names.h"
#include "designer/model/report_data.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {

PicturesDialog::PicturesDialog(DesignModel& model, const std::string& name, QWidget* parent)
    : QDialog(parent), m_model(model), m_old(EmbeddedPicturesOf(model.Source())), m_pictures(m_old) {
    setObjectName("picturesDialog");
    setWindowTitle(tr("Embedded Pictures"));
    auto* side = new QVBoxLayout;
    BuildList(*side);
    auto* right = new QVBoxLayout;
    BuildPicture(*right);
    auto* middle = new QHBoxLayout;
    middle->addLayout(side, 1);
    middle->addLayout(right, 2);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &PicturesDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PicturesDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(middle, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    connect(m_list, &QListWidget::currentRowChanged, this, &PicturesDialog::ShowCurrent);
    for (const EmbeddedPicture& picture : m_pictures) {
        m_list->addItem(QString::fromStdString(picture.name));
    }
    const auto found = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [&](const EmbeddedPicture& one) { return one.name == name; });
    m_list->setCurrentRow(found == m_pictures.end() ? 0 : static_cast<int>(found - m_pictures.begin()));
    ShowCurrent();
    const QSize wanted(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 26);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

QPushButton* PicturesDialog::AddButton(QBoxLayout& row, const QString& text, const char* name) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

void PicturesDialog::BuildList(QBoxLayout& side) {
    m_list = new QListWidget(this);
    m_list->setObjectName("pictures");
    m_list->setAccessibleName(tr("Pictures"));
    m_list->setUniformItemSizes(true);
    auto* label = new QLabel(tr("&Pictures:"), this);
    label->setBuddy(m_list);
    m_note = new Note(*m_list, this);
    side.addWidget(label);
    side.addWidget(m_list, 1);
    auto* row = new QHBoxLayout;
    connect(AddButton(*row, tr("&Add..."), "add"), &QPushButton::clicked, this, &PicturesDialog::Add);
    m_remove = AddButton(*row, tr("&Remove"), "remove");
    connect(m_remove, &QPushButton::clicked, this, &PicturesDialog::RemoveCurrent);
    side.addLayout(row);
}

void PicturesDialog::BuildPicture(QBoxLayout& side) {
    m_name = new QLineEdit(this);
    m_name->setObjectName("name");
    m_nameNote = new Note(*m_name, this);
    m_picture = new QLabel(this);
    m_picture->setObjectName("picture");
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setFrameShape(QFrame::StyledPanel);
    m_picture->setMinimumSize(fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 10);
    m_picture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_about = new QLabel(this);
    m_about->setObjectName("about");
    m_about->setWordWrap(true);
    m_about->setTextFormat(Qt::PlainText);
    m_about->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* form = new QFormLayout;
    form->addRow(tr("&Name:"), m_name);
    form->addRow(QString(), m_nameNote);
    side.addLayout(form);
    side.addWidget(m_picture, 1);
    side.addWidget(m_about);
    auto* row = new QHBoxLayout;
    row->addStretch();
    m_save = AddButton(*row, tr("&Save as a File..."), "save");
    connect(m_save, &QPushButton::clicked, this, &PicturesDialog::SaveCurrent);
    side.addLayout(row);
    connect(m_name, &QLineEdit::textEdited, this, &PicturesDialog::TakeName);
}

EmbeddedPicture* PicturesDialog::Current() {
    const int row = m_list->currentRow();
    return row < 0 ? nullptr : &m_pictures[static_cast<std::size_t>(row)];
}

std::string PicturesDialog::BytesOf(const EmbeddedPicture& picture) const {
    return picture.place == NewRow ? picture.bytes : BytesOfPicture(m_model.Source(), picture.place);
}

QString PicturesDialog::UseOf(const EmbeddedPicture& picture) const {
    if (picture.place == NewRow) {
        return {};
    }
    const std::string& name = m_old[static_cast<std::size_t>(picture.place)].name;
    return QString::fromStdString(UseOfPart(m_model.Source(), DataPart::Image, name));
}

void PicturesDialog::ShowCurrent() {
    const EmbeddedPicture* picture = Current();
    for (QWidget* control :
         {static_cast<QWidget*>(m_remove), static_cast<QWidget*>(m_save), static_cast<QWidget*>(m_name)}) {
        control->setEnabled(picture != nullptr);
    }
    m_note->Clear();
    m_nameNote->Clear();
    m_name->setText(picture ? QString::fromStdString(picture->name) : QString());
    m_picture->clear();
    m_about->clear();
    if (!picture) {
        return;
    }
    const QByteArray bytes = QByteArray::fromStdString(BytesOf(*picture));
    const QImage image = QImage::fromData(bytes);
    const QSize most = m_picture->minimumSize();
    const QString type = picture->type.empty() ? tr("No type") : QString::fromStdString(picture->type);
    if (image.isNull()) {
        m_picture->setText(tr("No picture that can be shown"));
        m_about->setText(tr("%1, %2 bytes").arg(type).arg(bytes.size()));
    } else {
        const bool isLarge = image.width() > most.width() || image.height() > most.height();
        m_picture->setPixmap(QPixmap::fromImage(
            isLarge ? image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation) : image));
        m_about->setText(tr("%1, %2 x %3 pixels, %4 bytes")
                             .arg(type)
                             .arg(image.width())
                             .arg(image.height())
                             .arg(bytes.size()));
    }
    const QString use = UseOf(*picture);
    m_about->setText(m_about->text() + "\n" + (use.isEmpty() ? tr("Not used") : tr("Used by %1").arg(use)));
}

void PicturesDialog::TakeName() {
    m_nameNote->Clear();
    if (EmbeddedPicture* picture = Current()) {
        picture->name = m_name->text().trimmed().toStdString();
        m_list->currentItem()->setText(QString::fromStdString(picture->name));
    }
}

std::string PicturesDialog::FreeName(const QString& file) const {
    const std::string wish = NameOfPictureFile(file);
    std::string name = wish;
    const auto isTaken = [&](const EmbeddedPicture& picture) { return SameAscii(picture.name, name); };
    for (int number = 2; std::any_of(m_pictures.begin(), m_pictures.end(), isTaken); ++number) {
        name = wish + std::to_string(number);
    }
    return name;
}

void PicturesDialog::Add() {
    const QString folder = QString::fromStdString(m_model.File().parent_path().string());
    const QString file = QFileDialog::getOpenFileName(this, tr("Picture"), folder,
                                                      tr("Pictures (*.png *.jpg *.jpeg *.gif *.bmp)"));
    if (!file.isEmpty()) {
        AddFile(file);
    }
}

bool PicturesDialog::AddFile(const QString& file) {
    EmbeddedPicture picture{.name = FreeName(file)};
    if (const QString fault = ReadPictureFile(file, picture); !fault.isEmpty()) {
        m_note->ShowError(fault);
        return false;
    }
    m_pictures.push_back(std::move(picture));
    m_list->addItem(QString::fromStdString(m_pictures.back().name));
    m_list->setCurrentRow(m_list->count() - 1);
    m_name->setFocus();
    return true;
}

void PicturesDialog::RemoveCurrent() {
    const int row = m_list->currentRow();
    if (const QString use = UseOf(*Current()); !use.isEmpty()) {
        m_note->ShowError(tr("%1 is used and stays. %2").arg(m_list->currentItem()->text(), use));
        return;
    }
    m_pictures.erase(m_pictures.begin() + row);
    delete m_list->takeItem(row);
    ShowCurrent();
    m_list->setFocus();
}

void PicturesDialog::SaveCurrent() {
    const EmbeddedPicture& picture = *Current();
    const QString ending =
        "." + QMimeDatabase().mimeTypeForName(QString::fromStdString(picture.type)).preferredSuffix();
    const QString folder = QString::fromStdString((m_model.File().parent_path() / picture.name).string());
    const QString file =
        QFileDialog::getSaveFileName(this, tr("Save Picture"), folder + (ending.size() > 1 ? ending : ""));
    if (file.isEmpty()) {
        return;
    }
    // Not an AtomicFile, whose errors name the path too: the note has it already.
    QSaveFile target(file);
    const QByteArray bytes = QByteArray::fromStdString(BytesOf(picture));
    if (target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size() && target.commit()) {
        m_note->ShowText(tr("Saved as %1").arg(file));
    } else {
        m_note->ShowError(tr("%1 cannot be written: %2").arg(file, target.errorString()));
    }
}

void PicturesDialog::accept() {
    for (std::size_t row = 0; row < m_pictures.size(); ++row) {
        const EmbeddedPicture& picture = m_pictures[row];
        if (picture.place != NewRow && picture == m_old[static_cast<std::size_t>(picture.place)]) {
            continue;
        }
        const QString name = QString::fromStdString(picture.name);
        const auto isSame = [&](const EmbeddedPicture& one) { return SameAscii(one.name, picture.name); };
        const bool isTaken = std::count_if(m_pictures.begin(), m_pictures.end(), isSame) > 1;
        if (isTaken || !rdl::IsIdentifier(picture.name)) {
            m_list->setCurrentRow(static_cast<int>(row));
            m_nameNote->ShowError(name.isEmpty() ? tr("Type a name for the picture")
                                  : isTaken      ? tr("Another picture has the name %1").arg(name)
                                                 : QString::fromStdString(NotAName(picture.name)));
            return;
        }
    }
    if (m_pictures == m_old || m_model.Edit(tr("Change Pictures"), [&](Document& document) {
            PutEmbeddedPictures(document, m_pictures);
        })) {
        QDialog::accept();
    }
}

}  // namespace designer
