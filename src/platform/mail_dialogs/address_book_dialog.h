// SPDX-License-Identifier: GPL-3.0-or-later
// The address book on the screen: a list with a search box, and the names chosen so far.
//
// Enter adds the highlighted names to the chosen ones; a second Enter is OK. OK returns the chosen names and
// the highlighted ones in the order in which they were chosen. The dialog keeps no state between two
// showings.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>
#include <vector>

#include "platform/contracts/mapi.h"
#include "platform/mail/book/vcard.h"

class AddressListModel;

namespace Ui {
class AddressBookDialog;
}

class AddressBookDialog : public QDialog {
    Q_OBJECT
 public:
    // The entries must outlive the dialog. With MAPI::Choice::One there is no list of chosen names: the
    // highlighted entry is the choice.
    AddressBookDialog(const std::vector<mailer::AddressEntry>& entries, MAPI::Choice choice,
                      QWidget* parent = nullptr);
    ~AddressBookDialog() override;

    std::vector<mailer::AddressEntry> Chosen() const;

    void txtSearch_Change();
    void lsvEntries_DblClick();
    void cmdAdd_Click();
    void cmdRemove_Click();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void SetUpList();
    void ShowEmptyBook();
    void Connect();
    void Enter();
    std::vector<std::size_t> Highlighted() const;  // indexes of entries that are not chosen yet
    void ShowChosen();
    void ShowState();

    std::unique_ptr<Ui::AddressBookDialog> m_ui;
    const std::vector<mailer::AddressEntry>& m_entries;
    const bool m_oneAddress;
    AddressListModel* m_model;
    std::vector<std::size_t> m_chosen;  // indexes of entries
};

// A chooser for the mail system (platform/mail/book/address_book.h): shows the dialog over the active window.
// Returns nullopt after a cancel.
std::optional<std::vector<mailer::AddressEntry>> ChooseAddresses(
    const std::vector<mailer::AddressEntry>& entries, MAPI::Choice choice);
