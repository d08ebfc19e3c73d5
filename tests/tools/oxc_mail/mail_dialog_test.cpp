// SPDX-License-Identifier: GPL-3.0-or-later
// The window, driven as a user does.
#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QSpinBox>
#include <map>

#include "platform/mail/profile/ini_text.h"
#include "support/smtp_server.h"
#include "tools/oxc_mail/mail_dialog_kit.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string At(const SmtpServer& server, const std::string& more) {
    return "Transport=smtp\nHost=127.0.0.1\nSecurity=none\nTimeout=5\nPort=" + std::to_string(server.Port()) +
           "\n" + more;
}

}  // namespace

TEST_F(MailWindow, NewProfileIsFilledInAndSaved) {
    Open();
    EXPECT_EQ(Result(),
              "There is no mail profile yet. Fill this in, try it with Check and store it with Save.");
    Type("txtName", "Reports, daily");
    Type("txtAddress", "r@example.com");
    Type("txtHost", "mail.example.com");
    Type("txtUser", "ann");
    Type("txtPassword", "s3cret ; x");
    Click("cmdSave");
    EXPECT_EQ(Result(), "Saved. The next mail goes out this way.");
    EXPECT_EQ(Profile(),
              "[Profile]\nFrom=\"Reports, daily\" "
              "<r@example.com>\nHost=mail.example.com\nTransport=smtp\nUser=ann\n"
              "Password=\"s3cret ; x\"\n");
    EXPECT_EQ(Edit("txtPassword")->text(), "");
    EXPECT_EQ(Edit("txtPassword")->placeholderText(), "stored");
}

TEST_F(MailWindow, SavingChangesOnlyWhatWasChanged) {
    WriteProfile(
        "; ours\nTransport = SMTP ; the way\nHost=a.example.com\nPort=587\nStrange=1\nPassword=s3cret\n");
    Open();
    Type("txtHost", "b.example.com");
    Click("cmdSave");
    EXPECT_EQ(
        Profile(),
        "[Profile]\nFrom=Reports <r@example.com>\n; ours\nTransport = SMTP ; the way\nHost=b.example.com\n"
        "Port=587\nStrange=1\nPassword=s3cret\n");
}

TEST_F(MailWindow, StoredPasswordNeverReachesAControl) {
    WriteProfile("Transport=smtp\nHost=h\nUser=ann\nPassword=s3cret\n");
    Open();
    for (const QLineEdit* edit : m_dialog->findChildren<QLineEdit*>()) {
        EXPECT_FALSE(edit->text().contains("s3cret")) << edit->objectName().toStdString();
    }
    EXPECT_EQ(Edit("txtPassword")->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(Find<QCheckBox>("chkShow")->isChecked());
    Find<QCheckBox>("chkShow")->click();
    EXPECT_EQ(Edit("txtPassword")->echoMode(), QLineEdit::Normal);
}

TEST_F(MailWindow, ForgottenPasswordGoesWithTheNextSave) {
    WriteProfile("Transport=smtp\nHost=h\nPassword=s3cret\n");
    Open();
    Click("cmdForget");
    EXPECT_THAT(Profile(), HasSubstr("s3cret"));
    Click("cmdSave");
    EXPECT_THAT(Profile(), Not(HasSubstr("Password")));
    EXPECT_EQ(Edit("txtPassword")->placeholderText(), "none stored");
}

TEST_F(MailWindow, EveryKeyHasOneFieldWithItsToolTip) {
    Open();
    for (const mailer::ProfileKey& key : mailer::ProfileKeys) {
        const auto controls = m_dialog->findChildren<QWidget*>();
        EXPECT_EQ(
            std::count_if(controls.begin(), controls.end(),
                          [&](const QWidget* control) { return control->toolTip() == key.help.data(); }),
            1)
            << key.name;
    }
}

TEST_F(MailWindow, EveryWordOfAChoiceHasItsItem) {
    WriteProfile("Transport=smtp\nHost=a.example.com\nSecurity=starttls\n");
    Open();
    for (const auto& [key, box] : {std::pair("Security", Find<QComboBox>("cboSecurity")),
                                   std::pair("Transport", Find<QComboBox>("cboTransport"))}) {
        std::set<std::string> written;
        for (int index = box->count() - 1; index >= 0; --index) {
            box->setCurrentIndex(index);
            Click("cmdSave");
            written.insert(mailer::IniText(Profile()).Find("Profile", key).value_or(""));
        }
        const auto words = mailer::FindProfileKey(key)->words;
        EXPECT_EQ(written, std::set<std::string>(words.begin(), words.end()));
    }
}

TEST_F(MailWindow, PortFollowsTheEncryptionUnlessItWasChosen) {
    WriteProfile("Transport=smtp\nHost=h\n");
    Open();
    auto* security = Find<QComboBox>("cboSecurity");
    auto* port = Find<QSpinBox>("spnPort");
    EXPECT_EQ(port->value(), 587);
    QTest::keyClick(security, Qt::Key_Down);
    EXPECT_EQ(port->value(), 465);
    QTest::keyClick(security, Qt::Key_Down);
    EXPECT_EQ(port->value(), 25);
    EXPECT_FALSE(Find<QCheckBox>("chkVerify")->isEnabled());
    port->setValue(2525);
    QTest::keyClick(security, Qt::Key_Up);
    EXPECT_EQ(port->value(), 2525);
    Click("cmdSave");
    EXPECT_THAT(Profile(), HasSubstr("Port=2525\nSecurity=tls\n"));
}

TEST_F(MailWindow, TimeoutFollowsTheTransportUnlessItWasChosen) {
    WriteProfile("Transport=smtp\nHost=h\n");
    Open();
    auto* transport = Find<QComboBox>("cboTransport");
    auto* timeout = Find<QSpinBox>("spnTimeout");
    EXPECT_EQ(timeout->value(), 60);
    QTest::keyClick(transport, Qt::Key_Down);
    EXPECT_EQ(timeout->value(), 600);
    Click("cmdSave");
    EXPECT_THAT(Profile(), Not(HasSubstr("Timeout")));
    timeout->setValue(30);
    QTest::keyClick(transport, Qt::Key_Up);
    EXPECT_EQ(timeout->value(), 30);
    Click("cmdSave");
    EXPECT_THAT(Profile(), HasSubstr("Timeout=30\n"));
}

TEST_F(MailWindow, BrokenProfileOpensWithWhatCanBeReadAndIsRepairedBySaving) {
    WriteProfile("Transport=smtp\nHost=mail.example.com\nSecurity=maybe\n");
    Open();
    EXPECT_THAT(Result(), HasSubstr("Security is \"maybe\", not none, starttls or tls."));
    EXPECT_EQ(Edit("txtHost")->text(), "mail.example.com");
    Click("cmdSave");
    EXPECT_THAT(Profile(), HasSubstr("Security=starttls\n"));
}

TEST_F(MailWindow, ProfileThatMakesNoSenseIsNotSaved) {
    WriteProfile("Transport=outbox\n");
    const std::string before = Profile();
    Open();
    Type("txtAddress", "nobody");
    Click("cmdSave");
    EXPECT_THAT(Result(), StartsWith("Not saved: "));
    EXPECT_THAT(Result(), HasSubstr("is not a mail address"));
    EXPECT_EQ(Profile(), before);
}

TEST_F(MailWindow, AddressBookShowsItsNumberOfEntries) {
    WriteProfile("Transport=outbox\n");
    WriteBytes(m_folder / "a.vcf", "BEGIN:VCARD\nFN:Ann\nEMAIL:ann@example.com\nEND:VCARD\n");
    Open();
    EXPECT_EQ(Find<QLabel>("lblEntries")->text(), "no address book");
    Type("txtVCard", (m_folder / "a.vcf").c_str());
    EXPECT_EQ(Find<QLabel>("lblEntries")->text(), "1 entry");
    Type("txtVCard", "/no/such.vcf");
    EXPECT_EQ(Find<QLabel>("lblEntries")->text(),
              "The address book \"/no/such.vcf\" is missing or cannot be read");
}

// Paths on drives of another system are typed in and come with profiles from there.
TEST_F(MailWindow, AddressBookOnADriveThatIsNotThereIsToldAndTheWindowStays) {
    WriteProfile("Transport=outbox\n[AddressBook]\nVCard=C:\\book.vcf\n");
    Open();
    EXPECT_THAT(Result(), HasSubstr("VCard: Path not found: \"C:\\book.vcf\""));
    EXPECT_EQ(Find<QLabel>("lblEntries")->text(), "Path not found: \"C:\\book.vcf\"");
    Type("txtVCard", "D:\\book.vcf");
    EXPECT_EQ(Find<QLabel>("lblEntries")->text(), "Path not found: \"D:\\book.vcf\"");
    Click("cmdSave");
    EXPECT_THAT(Result(), StartsWith("Not saved: "));
}

TEST_F(MailWindow, TagsInTheNameOfTheAddressBookAreShownAsTheyStand) {
    WriteProfile("Transport=outbox\n");
    Open();
    Type("txtVCard", "/no/<b>such</b>.vcf");
    const auto* entries = Find<QLabel>("lblEntries");
    EXPECT_EQ(entries->textFormat(), Qt::PlainText);
    EXPECT_EQ(entries->text(), "The address book \"/no/<b>such</b>.vcf\" is missing or cannot be read");
}

TEST_F(MailWindow, LinkThatLeadsToItselfIsToldAndTheWindowStays) {
    std::filesystem::create_directories(File().parent_path());
    std::filesystem::create_symlink(File(), File());
    Open();
    EXPECT_EQ(Result(), "Failed: The mail profile \"" + File().string() + "\" cannot be read.");
    Click("cmdSave");
    EXPECT_THAT(Result(), StartsWith("Not saved: "));
    EXPECT_TRUE(std::filesystem::is_symlink(File()));
}

TEST_F(MailWindow, CheckTriesWhatStandsInTheWindow) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    WriteProfile(At(server, "User=ann\nPassword=wr0ng\n"));
    Open();
    Click("cmdCheck");
    EXPECT_THAT(ResultOfWork(), StartsWith("Failed: User, Password: "));
    Type("txtPassword", "right");
    Click("cmdCheck");
    EXPECT_THAT(ResultOfWork(), StartsWith("OK: The mail server \"127.0.0.1\""));
    EXPECT_TRUE(server.Messages().empty());
    EXPECT_THAT(Profile(), HasSubstr("wr0ng"));
}

TEST_F(MailWindow, CheckTellsWhoGetsAlerts) {
    WriteProfile("Transport=outbox\nOutboxFolder=" + (m_folder / "out").string() + "\n");
    Open();
    Click("cmdCheck");
    EXPECT_THAT(
        ResultOfWork(),
        EndsWith("\nOK: No alert address is set in Options: nobody gets a mail when a report fails."));
    WriteBytes(
        File().parent_path() / "settings.reg",
        "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\Software\\Norvale\\Oxbow Courier]\n"
        "\"AlertWho\"=\"a@example.com;b@example.com;\"\n");
    Click("cmdCheck");
    EXPECT_THAT(
        ResultOfWork(),
        EndsWith(
            "\nFailed: On error alert, in Options: Alerts cannot go out. \"a@example.com;b@example.com\" "
            "is not a mail address. Give one address, or one name of the address book."));
}

TEST_F(MailWindow, OwnNameForTheServerIsKept) {
    const SmtpServer server({});
    WriteProfile(At(server, "Hello=old.example.com\n"));
    Open();
    EXPECT_EQ(Edit("txtHello")->text(), "old.example.com");
    Type("txtHello", "reports.example.com");
    Click("cmdSave");
    EXPECT_THAT(Profile(), HasSubstr("Hello=reports.example.com\n"));
    Type("txtHello", "a/b");
    Click("cmdSave");
    EXPECT_THAT(Result(), HasSubstr("Hello is \"a/b\", not the name or the address of a machine"));
}

TEST_F(MailWindow, UmlautDomainIsShownAndStoredAsItWasTyped) {
    WriteProfile("Transport=outbox\n");
    Open();
    Edit("txtAddress")->setText("post@bücher.example");
    Click("cmdSave");
    EXPECT_THAT(Profile(), HasSubstr("From=Reports <post@bücher.example>\n"));
    Open();
    EXPECT_EQ(Edit("txtAddress")->text(), "post@bücher.example");
}

TEST_F(MailWindow, TestMessageAsksForTheRecipient) {
    const SmtpServer server({});
    WriteProfile(At(server, ""));
    Open();
    QTimer::singleShot(0, m_dialog.get(), [this] {
        auto* question = m_dialog->findChild<QInputDialog*>();
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(question->labelText(), "Send a test message to:");
        EXPECT_EQ(question->textValue(), "r@example.com");
        question->setTextValue("ann@example.com");
        question->accept();
    });
    Click("cmdTest");
    EXPECT_THAT(ResultOfWork(), HasSubstr("has taken the test message to ann@example.com."));
    ASSERT_EQ(server.Messages().size(), 1u);
}

TEST_F(MailWindow, SilentServerIsStoppedAndTheWindowStaysAlive) {
    const SmtpServer server({"--mode", "hang"});
    WriteProfile(At(server, ""));
    Open();
    Click("cmdCheck");
    EXPECT_EQ(Result(), "Checking ...");
    EXPECT_FALSE(Find<QPushButton>("cmdCheck")->isEnabled());
    Click("cmdStop");
    EXPECT_EQ(ResultOfWork(), "Stopped.");
}

TEST_F(MailWindow, WindowClosesWhileACheckIsGoingOn) {
    const SmtpServer server({"--mode", "hang"});
    WriteProfile(At(server, ""));
    Open();
    Click("cmdCheck");
    Click("cmdClose");
    EXPECT_FALSE(m_dialog->isVisible());
    m_dialog.reset();
}

TEST_F(MailWindow, CloseAsksAboutChanges) {
    WriteProfile("Transport=outbox\n");
    const std::string before = Profile();
    Open();
    Type("txtName", "Figures");
    Answer(QMessageBox::Cancel);
    Click("cmdClose");
    EXPECT_EQ(m_asked, "The mail profile has changes that are not saved.");
    EXPECT_TRUE(m_dialog->isVisible());
    Answer(QMessageBox::Discard);
    QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Profile(), before);
}

TEST_F(MailWindow, CloseSavesWhenToldSo) {
    WriteProfile("Transport=outbox\n");
    Open();
    Type("txtName", "Figures");
    Answer(QMessageBox::Save);
    m_dialog->close();
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_THAT(Profile(), HasSubstr("From=Figures <r@example.com>"));
}

TEST_F(MailWindow, CloseWithoutChangesAsksNothing) {
    WriteProfile("Transport=outbox\n");
    Open();
    Click("cmdClose");
    EXPECT_FALSE(m_dialog->isVisible());
}

TEST_F(MailWindow, ReturnKeySaves) {
    WriteProfile("Transport=outbox\n");
    Open();
    Edit("txtName")->selectAll();
    QTest::keyClicks(Edit("txtName"), "Figures");
    QTest::keyClick(Edit("txtName"), Qt::Key_Return);
    EXPECT_THAT(Profile(), HasSubstr("From=Figures <r@example.com>"));
}

TEST_F(MailWindow, ReturnKeyOnACommandIsThatCommand) {
    WriteProfile("Transport=outbox\n");
    const std::string before = Profile();
    Open();
    Type("txtName", "Figures");
    Answer(QMessageBox::Discard);
    QTest::keyClick(Find<QPushButton>("cmdClose"), Qt::Key_Return);
    EXPECT_EQ(m_asked, "The mail profile has changes that are not saved.");
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(Profile(), before);
}

TEST_F(MailWindow, FieldsOfAllGroupsBeginAtOneEdge) {
    for (const int transport : {0, 1, 2}) {
        Open();
        Find<QComboBox>("cboTransport")->setCurrentIndex(transport);
        QApplication::processEvents();
        std::map<int, std::string> edges;
        for (const char* name :
             {"txtName", "txtAddress", "cboTransport", "txtHost", "cboSecurity", "chkVerify", "txtUser",
              "txtSendmail", "txtOutboxFolder", "spnTimeout", "txtVCard", "lblEntries"}) {
            const auto* field = Find<QWidget>(name);
            if (field->isVisible()) {
                edges[field->mapTo(m_dialog.get(), QPoint(0, 0)).x()] += std::string(" ") + name;
            }
        }
        EXPECT_EQ(edges.size(), 1U) << testing::PrintToString(edges);
    }
}

TEST_F(MailWindow, ProfileThatCannotBeReadLeavesTheUsualNumbers) {
    std::filesystem::create_directories(File());
    Open();
    EXPECT_EQ(Find<QSpinBox>("spnPort")->value(), 587);
    EXPECT_EQ(Find<QSpinBox>("spnTimeout")->value(), 60);
}

TEST_F(MailWindow, WindowBearsThePictureOfTheProgram) {
    Open();
    const QImage picture = m_dialog->windowIcon().pixmap(32, 32).toImage();
    ASSERT_FALSE(picture.isNull());
    EXPECT_GT(picture.pixelColor(picture.rect().center()).alpha(), 0);
}

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");  // for its tests it has no display
    }
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
