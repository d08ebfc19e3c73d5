// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/value_field.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

#include "designer/expressions/expression_dialog.h"
#include "rdl/api/style_values.h"

namespace designer {
namespace {

constexpr int SwatchSize = 14;                        // pixels
constexpr int LeastCharacters = 14, MostListed = 20;  // of the list
constexpr const char* ListedSizes[] = {"7pt",  "8pt",  "9pt",  "10pt", "11pt", "12pt", "14pt",
                                       "16pt", "18pt", "20pt", "24pt", "28pt", "36pt", "48pt"};
constexpr const char* LineSizes[] = {"0.25pt", "0.5pt", "1pt", "1.5pt", "2pt", "3pt"};
constexpr const char* Distances[] = {"0pt", "2pt", "4pt", "6pt", "10pt"};

QIcon Swatch(const QColor& colour) {
    QPixmap picture(SwatchSize, SwatchSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setPen(Qt::gray);
    painter.setBrush(colour.isValid() ? QBrush(colour) : QBrush(Qt::NoBrush));
    painter.drawRect(0, 0, SwatchSize - 1, SwatchSize - 1);
    return QIcon(picture);
}

}  // namespace

QColor ColourOf(const std::string& text) {
    const auto colour = rdl::ColorOf(text);
    return colour ? QColor::fromRgba(*colour) : QColor();
}

std::string NameOfColour(const QColor& colour) {
    for (const rdl::NamedColor& named : rdl::NamedColors()) {
        if (colour.alpha() == 255 && named.argb == colour.rgb()) {
            return std::string(named.name);
        }
    }
    return colour.name().toStdString();
}

ValueField::ValueField(const DesignModel& model, const SelectionValues& values, std::string_view name,
                       QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_values(values),
      m_name(name),
      m_row(values.Find(name)),
      m_list(new QComboBox(this)) {
    const QString shown = QString::fromUtf8(name);
    m_list->setObjectName(shown);
    m_list->setAccessibleName(shown);
    m_list->setEditable(true);
    m_list->setInsertPolicy(QComboBox::NoInsert);
    m_list->setMaxVisibleItems(MostListed);
    m_list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_list->setMinimumContentsLength(LeastCharacters);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list, 1);
    setFocusProxy(m_list);
    setEnabled(m_row != nullptr);
    if (!m_row) {
        return;
    }
    AddChoices();
    const PropertyValue value = m_values.ValueOf(m_name);
    m_isSet = value.isSet;
    m_old = value.isSet && !value.isMixed ? value.text : "";
    m_list->setCurrentIndex(-1);
    m_list->setEditText(QString::fromStdString(m_old));
    m_list->lineEdit()->setPlaceholderText(value.isMixed ? tr("(several values)")
                                                         : QString::fromUtf8(m_row->property->missing));
    m_list->lineEdit()->setCursorPosition(0);
    if (m_row->property->kind == PropertyKind::Color) {
        AddColourButton(*layout);
    }
    if (m_row->property->expressions != Expressions::No) {
        AddExpressionButton(*layout);
    }
    // What is picked is a text like any other: the picture of an entry would stay beside other texts.
    connect(m_list, &QComboBox::activated, this, [this] {
        const QString text = m_list->currentText();
        m_list->setCurrentIndex(-1);
        m_list->setEditText(text);
    });
    connect(m_list, &QComboBox::editTextChanged, this, [this] {
        ShowColour();
        emit Edited();
    });
    // The list keeps Enter to itself; here it takes the dialog as it is.
    connect(m_list->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        if (auto* dialog = qobject_cast<QDialog*>(window())) {
            dialog->accept();
        }
    });
    ShowColour();
}

void ValueField::AddChoices() {
    const Property& property = *m_row->property;
    for (const std::string& choice : ChoicesFor(m_model.Source(), property)) {
        const QString text = QString::fromStdString(choice);
        property.kind == PropertyKind::Color ? m_list->addItem(Swatch(ColourOf(choice)), text)
                                             : m_list->addItem(text);
    }
    const auto add = [this](const auto& sizes) {
        for (const char* size : sizes) {
            m_list->addItem(size);
        }
    };
    if (property.kind == PropertyKind::Size) {
        property.name == "Font size"                      ? add(ListedSizes)
        : property.name.ends_with("width")                ? add(LineSizes)
        : property.category == std::string_view("Layout") ? add(Distances)
                                                          : void();
    }
}

void ValueField::AddColourButton(QHBoxLayout& layout) {
    m_colour = new QToolButton(this);
    m_colour->setObjectName(QString::fromUtf8(m_name) + " dialog");
    m_colour->setAccessibleName(tr("Choose %1").arg(QString::fromUtf8(m_name)));
    m_colour->setToolTip(tr("Choose a colour"));
    m_colour->setFocusPolicy(Qt::TabFocus);
    connect(m_colour, &QToolButton::clicked, this, &ValueField::AskForColour);
    layout.addWidget(m_colour);
}

void ValueField::AddExpressionButton(QHBoxLayout& layout) {
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromUtf8(m_name) + " fx");
    button->setText("fx");
    button->setAccessibleName(tr("Expression for %1").arg(QString::fromUtf8(m_name)));
    button->setToolTip(tr("Expression"));
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, &ValueField::AskForValue);
    layout.addWidget(button);
}

std::string ValueField::Text() const {
    return m_list->currentText().trimmed().toStdString();
}

std::string ValueField::Effective() const {
    const std::string text = Text();
    return text.empty() && m_row ? std::string(m_row->property->missing) : text;
}

void ValueField::SetText(const std::string& text) {
    m_list->setEditText(QString::fromStdString(text));
    m_list->lineEdit()->setCursorPosition(0);
}

void ValueField::Reset() {
    SetText("");
    m_isReset = m_isSet;
    emit Edited();
}

bool ValueField::IsChanged() const {
    return m_row && (Text() != m_old || (m_isReset && Text().empty()));
}

void ValueField::Write(Document& document) const {
    if (IsChanged()) {
        m_values.Write(document, m_name, Text());
    }
}

void ValueField::ShowColour() {
    if (m_colour) {
        m_colour->setIcon(Swatch(ColourOf(Effective())));
    }
}

void ValueField::AskForColour() {
    const QColor now = ColourOf(Effective());
    const QColor chosen = QColorDialog::getColor(now.isValid() && now.alpha() > 0 ? now : QColor(Qt::white),
                                                 window(), QString::fromUtf8(m_name));
    if (chosen.isValid()) {
        SetText(NameOfColour(chosen));
    }
}

void ValueField::AskForValue() {
    const int owner = m_model.Source().IndexOf(m_values.OwnerOf(m_name));
    const auto write = [owner, this](Document& copy, const std::string& value) {
        SetRow(copy, {copy.IdAt(owner)}, *m_row, value);
    };
    if (const auto value = AskForExpression(m_model, {QString::fromUtf8(m_name), write}, Text(), window())) {
        SetText(*value);
    }
}

}  // namespace designer
