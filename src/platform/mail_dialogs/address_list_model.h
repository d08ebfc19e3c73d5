// The entries of an address book as rows of a list, those that match a search.
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

    // Leaves the entries in whose name, address and nicknames each of the words is found, wherever it stands
    // and without regard to case and accents. No words: all of them.
    void Search(const QString& words);
    // The place in the book of the entry that a row shows.
    std::size_t EntryOfRow(int row) const { return m_rows[static_cast<std::size_t>(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    const std::vector<mailer::AddressEntry>& m_entries;
    std::vector<QString> m_searched;  // what a search looks through, by entry
    std::vector<std::size_t> m_rows;  // the entry of each row
};
