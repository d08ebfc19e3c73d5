// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of an address book that match a search, as rows of a list.
#pragma once

#include <QAbstractTableModel>
#include <QString>
#include <vector>

#include "platform/mail/book/vcard.h"

class AddressListModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    enum Column { Name, Address, ColumnCount };

    // The entries must outlive the model.
    explicit AddressListModel(const std::vector<mailer::AddressEntry>& entries, QObject* parent = nullptr);

    // Keeps the entries whose name, address and nicknames contain each of the words, at any position and
    // without regard to case and accents. Without words it keeps all entries.
    void Search(const QString& words);
    // Returns the index in the book of the entry in a row.
    std::size_t EntryOfRow(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    const std::vector<mailer::AddressEntry>& m_entries;
    std::vector<QString> m_searched;  // the text that a search examines, by entry
    std::vector<std::size_t> m_rows;  // the entry index of each row
};
