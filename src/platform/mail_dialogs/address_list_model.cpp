// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail_dialogs/address_list_model.h"

#include <QStringList>
#include <algorithm>

namespace {

// Returns the text without accents and case, so that "munoz" finds "Muñoz".
QString Folded(const QString& text) {
    QString folded;
    for (const QChar character : text.normalized(QString::NormalizationForm_KD)) {
        if (character.category() != QChar::Mark_NonSpacing) {
            folded += character;
        }
    }
    return folded.toCaseFolded();
}

// Each text has a line of its own: no word of a search matches across two texts.
QString Searched(const mailer::AddressEntry& entry) {
    std::string text = entry.name + '\n' + entry.address;
    for (const std::string& nickname : entry.nicknames) {
        text += '\n' + nickname;
    }
    return Folded(QString::fromStdString(text));
}

// Plain text, whatever the address book holds: a tooltip would interpret tags.
QString Tip(const mailer::AddressEntry& entry) {
    QString tip = QString::fromStdString(entry.name + " <" + entry.address + ">").toHtmlEscaped();
    for (const std::string& nickname : entry.nicknames) {
        tip += "<br>" + QString::fromStdString(nickname).toHtmlEscaped();
    }
    return "<qt>" + tip + "</qt>";
}

}  // namespace

AddressListModel::AddressListModel(const std::vector<mailer::AddressEntry>& entries, QObject* parent)
    : QAbstractTableModel(parent), m_entries(entries) {
    m_searched.reserve(entries.size());
    for (const mailer::AddressEntry& entry : entries) {
        m_searched.push_back(Searched(entry));
    }
    Search({});
}

void AddressListModel::Search(const QString& words) {
    const QStringList wanted = Folded(words).split(' ', Qt::SkipEmptyParts);
    beginResetModel();
    m_rows.clear();
    for (std::size_t entry = 0; entry < m_entries.size(); ++entry) {
        const QString& text = m_searched[entry];
        if (std::all_of(wanted.begin(), wanted.end(),
                        [&text](const QString& word) { return text.contains(word); })) {
            m_rows.push_back(entry);
        }
    }
    endResetModel();
}

int AddressListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int AddressListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant AddressListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const mailer::AddressEntry& entry = m_entries[EntryOfRow(index.row())];
    if (role == Qt::DisplayRole) {
        return QString::fromStdString(index.column() == Name ? entry.name : entry.address);
    }
    return role == Qt::ToolTipRole ? Tip(entry) : QVariant();
}

QVariant AddressListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
        return {};
    }
    return section == Name ? tr("Name") : tr("Address");
}
