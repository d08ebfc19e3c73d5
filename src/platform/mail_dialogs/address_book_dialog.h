// The address book on the screen: a list that is searched while one types, and the names chosen so far.
//
// Enter takes the highlighted names over to the chosen ones, and a second Enter is OK. OK gives the chosen
// names and those still highlighted, in the order in which they were taken. Nothing is remembered from one
// showing to the next.
#pragma once

#include <QDialog>
#include <memory>
#include <optional>
#include <vector>

#include "platform/mail/book/vcard.h"

class AddressListModel;

namespace Ui {
class AddressBookDialog;
}

class AddressBookDialog : public QDialog {
    Q_OBJECT
 public:
    // The entries must outlive the dialog. With `oneAddress` there is no list of chosen names: the one that
    // is highlighted is it.
    AddressBookDialog(const std::vector<mailer::AddressEntry>& entries, bool oneAddress,
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
    std::vector<std::size_t> Highlighted() const;  // entries that are not chosen yet
    void ShowChosen();
    void ShowState();

    std::unique_ptr<Ui::AddressBookDialog> m_ui;
    const std::vector<mailer::AddressEntry>& m_entries;
    const bool m_oneAddress;
    AddressListModel* m_model;
    std::vector<std::size_t> m_chosen;  // entries
};

// A chooser for the mail system (platform/mail/address_book.h): shows the dialog over the active window.
std::optional<std::vector<mailer::AddressEntry>> ChooseAddresses(
    const std::vector<mailer::AddressEntry>& entries, bool oneAddress);
