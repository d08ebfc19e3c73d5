// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail_dialogs/address_book_dialog.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

#include "platform/controls/kit/window_size.h"
#include "platform/mail_dialogs/address_list_model.h"
#include "ui_address_book_dialog.h"

namespace {

bool Contains(const std::vector<std::size_t>& entries, std::size_t entry) {
    return std::find(entries.begin(), entries.end(), entry) != entries.end();
}

}  // namespace

AddressBookDialog::AddressBookDialog(const std::vector<mailer::AddressEntry>& entries, MAPI::Choice choice,
                                     QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::AddressBookDialog>()),
      m_entries(entries),
      m_oneAddress(choice == MAPI::Choice::One),
      m_model(new AddressListModel(entries, this)) {
    m_ui->setupUi(this);
    SetUpList();
    m_ui->chosenPart->setVisible(!m_oneAddress);
    m_ui->lblEmpty->setVisible(entries.empty());
    if (entries.empty()) {
        ShowEmptyBook();
    }
    Connect();
    constexpr int Characters = 75;
    constexpr int Lines = 26;
    resize(SizeForText(*this, Characters, entries.empty() ? 0 : Lines));
    ShowState();
}

AddressBookDialog::~AddressBookDialog() = default;

void AddressBookDialog::SetUpList() {
    QTreeView& list = *m_ui->lsvEntries;
    list.setModel(m_model);
    list.setSelectionMode(m_oneAddress ? QAbstractItemView::SingleSelection
                                       : QAbstractItemView::ExtendedSelection);
    list.header()->setSectionResizeMode(QHeaderView::Stretch);
}

void AddressBookDialog::ShowEmptyBook() {
    m_ui->listPart->hide();
    m_ui->chosenPart->hide();
    m_ui->cmdCancel->setFocus();
}

void AddressBookDialog::Connect() {
    connect(m_ui->txtSearch, &QLineEdit::textChanged, this, &AddressBookDialog::txtSearch_Change);
    connect(m_ui->lsvEntries, &QTreeView::doubleClicked, this, &AddressBookDialog::lsvEntries_DblClick);
    connect(m_ui->lsvEntries->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &AddressBookDialog::ShowState);
    connect(m_ui->lstChosen, &QListWidget::itemSelectionChanged, this, &AddressBookDialog::ShowState);
    connect(m_ui->cmdAdd, &QPushButton::clicked, this, &AddressBookDialog::cmdAdd_Click);
    connect(m_ui->cmdRemove, &QPushButton::clicked, this, &AddressBookDialog::cmdRemove_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->txtSearch->installEventFilter(this);
    m_ui->lsvEntries->installEventFilter(this);
    m_ui->lstChosen->installEventFilter(this);
}

std::vector<mailer::AddressEntry> AddressBookDialog::Chosen() const {
    std::vector<mailer::AddressEntry> chosen;
    for (const std::size_t entry : m_chosen) {
        chosen.push_back(m_entries[entry]);
    }
    for (const std::size_t entry : Highlighted()) {
        chosen.push_back(m_entries[entry]);
    }
    return chosen;
}

std::vector<std::size_t> AddressBookDialog::Highlighted() const {
    std::vector<std::size_t> entries;
    for (const QModelIndex& row : m_ui->lsvEntries->selectionModel()->selectedRows()) {
        const std::size_t entry = m_model->EntryOfRow(row.row());
        if (!Contains(m_chosen, entry)) {
            entries.push_back(entry);
        }
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

// The best match is highlighted, so that Enter takes it.
void AddressBookDialog::txtSearch_Change() {
    const QString words = m_ui->txtSearch->text().trimmed();
    m_model->Search(words);
    if (!words.isEmpty() && m_model->rowCount() > 0) {
        m_ui->lsvEntries->setCurrentIndex(m_model->index(0, 0));
    }
    ShowState();
}

void AddressBookDialog::lsvEntries_DblClick() {
    if (m_oneAddress) {
        accept();
    } else {
        cmdAdd_Click();
    }
}

void AddressBookDialog::cmdAdd_Click() {
    for (const std::size_t entry : Highlighted()) {
        m_chosen.push_back(entry);
    }
    m_ui->lsvEntries->clearSelection();
    m_ui->txtSearch->selectAll();
    ShowChosen();
}

void AddressBookDialog::cmdRemove_Click() {
    std::vector<std::size_t> left;
    for (int row = 0; row < m_ui->lstChosen->count(); ++row) {
        if (!m_ui->lstChosen->item(row)->isSelected()) {
            left.push_back(m_chosen[static_cast<std::size_t>(row)]);
        }
    }
    m_chosen = std::move(left);
    ShowChosen();
}

void AddressBookDialog::ShowChosen() {
    m_ui->lstChosen->clear();
    for (const std::size_t entry : m_chosen) {
        const mailer::AddressEntry& shown = m_entries[entry];
        m_ui->lstChosen->addItem(QString::fromStdString(shown.name + " <" + shown.address + ">"));
    }
    m_ui->lstChosen->scrollToBottom();
    ShowState();
}

void AddressBookDialog::ShowState() {
    const bool highlighted = !Highlighted().empty();
    m_ui->cmdAdd->setEnabled(highlighted);
    m_ui->cmdRemove->setEnabled(!m_ui->lstChosen->selectedItems().isEmpty());
    m_ui->cmdOK->setEnabled(highlighted || !m_chosen.empty());
    m_ui->lblFound->setText(m_model->rowCount() == 0
                                ? tr("No name matches.")
                                : tr("%1 of %2 names").arg(m_model->rowCount()).arg(m_entries.size()));
}

bool AddressBookDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (watched == m_ui->lstChosen) {
        if (key.key() == Qt::Key_Delete) {
            cmdRemove_Click();
            return true;
        }
        return false;
    }
    if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
        Enter();
        return true;
    }
    const bool moves = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down || key.key() == Qt::Key_PageUp ||
                       key.key() == Qt::Key_PageDown;
    if (watched == m_ui->txtSearch && moves) {
        QCoreApplication::sendEvent(m_ui->lsvEntries, event);
        return true;
    }
    return false;
}

void AddressBookDialog::Enter() {
    if (!m_oneAddress && !Highlighted().empty()) {
        cmdAdd_Click();
    } else if (m_ui->cmdOK->isEnabled()) {
        accept();
    }
}

std::optional<std::vector<mailer::AddressEntry>> ChooseAddresses(
    const std::vector<mailer::AddressEntry>& entries, MAPI::Choice choice) {
    AddressBookDialog dialog(entries, choice, QApplication::activeWindow());
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dialog.Chosen();
}
