// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmFolders.h"

#include "dialogs/ModalForm.h"
#include "platform/controls/items/image_list.h"
#include "platform/controls/kit/window_size.h"
#include "store/Folders.h"
#include "ui_frmFolders.h"

// The picture is in a static library, so that only this call registers it. It must be outside every
// namespace.
static void RegisterPictures() {
    Q_INIT_RESOURCE(dialogs);
}

namespace {

constexpr int FolderImage = 1;

using Global::StoredFolder;

std::string TopKey(const StoredFolder& folder) {
    return folder.id + folder.name;
}

std::string ChildKey(const StoredFolder& folder) {
    return folder.name + folder.id;
}

const ImageList& ImageList1() {
    static const ImageList images = [] {
        RegisterPictures();
        ImageList list;
        list.Add(FolderImage, ":/dialogs/folder.svg");
        return list;
    }();
    return images;
}

}  // namespace

void frmFolders::ShowModal(EditableText& cmbFolder) {
    frmFolders form(cmbFolder, OwnerWindow());
    if (LoadForm([&form] { form.Form_Load(); })) {
        form.exec();
    }
}

frmFolders::frmFolders(EditableText& cmbFolder, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmFolders>()), m_cmbFolder(cmbFolder) {
    m_ui->setupUi(this);
    m_ui->tvwFolder->Icons(&ImageList1());
    connect(m_ui->tvwFolder, &TreeView::Click, this, &frmFolders::tvwFolder_Click);
    // Also for Enter on a folder, which the tree does not pass on to the default button.
    connect(m_ui->tvwFolder, &TreeView::DblClick, m_ui->cmdOK, &QPushButton::click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmFolders::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmFolders::cmdCancel_Click);
    constexpr int Characters = 50, Lines = 20;
    resize(SizeForText(*this, Characters, Lines));
}

frmFolders::~frmFolders() = default;

void frmFolders::Form_Load() {
    Nodes& nodes = m_ui->tvwFolder->Nodes();
    for (const StoredFolder& folder : Global::FoldersBelow("0")) {
        nodes.Add("", TopKey(folder), folder.name, FolderImage);
        for (const StoredFolder& child : Global::FoldersBelow(folder.id)) {
            nodes.Add(TopKey(folder), ChildKey(child), child.name, FolderImage);
            AddChildren(child.id, ChildKey(child));
        }
    }
    // A double click chooses a folder and cannot open one, so all levels are open.
    m_ui->tvwFolder->expandAll();
}

void frmFolders::AddChildren(const std::string& parentID, const std::string& parentKey) {
    for (const StoredFolder& folder : Global::FoldersBelow(parentID)) {
        m_ui->tvwFolder->Nodes().Add(parentKey, ChildKey(folder), folder.name, FolderImage);
    }
}

void frmFolders::tvwFolder_Click() {
    m_ui->cmdOK->setEnabled(!m_ui->tvwFolder->SelectedItem().Text().empty());
}

void frmFolders::cmdOK_Click() {
    m_cmbFolder.Text(m_ui->tvwFolder->SelectedItem().Text());
    accept();
}

void frmFolders::cmdCancel_Click() {
    reject();
}
