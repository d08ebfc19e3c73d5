// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for embedded pictures, by mouse and keys.
#include "designer/report_dialogs/pictures_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <cstdint>

#include "../shown_dialog.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

using testing::HasSubstr;
using testing::Not;

QByteArray Png(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// Says that it has 60000 x 60000 pixels.
QByteArray HugePng() {
    QByteArray bytes = Png(12, 8);
    const auto put = [&bytes](int at, std::uint32_t number) {
        for (int i = 0; i < 4; ++i) {
            bytes[at + i] = static_cast<char>(number >> (24 - 8 * i));
        }
    };
    put(16, 60000);
    put(20, 60000);
    std::uint32_t sum = 0xFFFFFFFF;  // the checksum of the head (ISO/IEC 15948, annex D)
    for (int at = 12; at < 29; ++at) {
        sum ^= static_cast<unsigned char>(bytes[at]);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? 0xEDB88320 ^ (sum >> 1) : sum >> 1;
        }
    }
    put(29, ~sum);
    return bytes;
}

std::string Report() {
    return R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Image Name="Logo">
            <Source>Embedded</Source>
            <Value>Tree</Value>
          </Image>
        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>16cm</Width>
      <Page/>
    </ReportSection>
  </ReportSections>
  <EmbeddedImages>
    <EmbeddedImage Name="Tree">
      <MIMEType>image/png</MIMEType>
      <ImageData>)" +
           Png(12, 8).toBase64().toStdString() + R"(</ImageData>
    </EmbeddedImage>
    <EmbeddedImage Name="Broken">
      <MIMEType>image/png</MIMEType>
      <ImageData>?</ImageData>
    </EmbeddedImage>
  </EmbeddedImages>
</Report>
)";
}

class PicturesDialogTest : public test::ShownDialogTest {
 protected:
    PicturesDialogTest() : m_model(Document(Report())) {
        Show(std::make_unique<PicturesDialog>(m_model, ""));
    }
    QString File(const char* name, const QByteArray& bytes) const {
        WriteBytes(m_folder / name, bytes.toStdString());
        return QString::fromStdString((m_folder / name).string());
    }
    bool AddFile(const QString& file) const { return static_cast<PicturesDialog&>(*m_dialog).AddFile(file); }
    std::string Label(const char* name) const { return The<QLabel>(name).text().toStdString(); }
    QListWidget& List() const { return The<QListWidget>("pictures"); }
    const std::string& Text() const { return m_model.Source().Text(); }

    const TemporaryFolder m_folder;
    DesignModel m_model;
};

TEST_F(PicturesDialogTest, PicturesAreShownWithWhatUsesThem) {
    EXPECT_THAT(Label("about"), HasSubstr("image/png, 12 x 8 pixels, "));
    EXPECT_THAT(Label("about"), HasSubstr("\nUsed by Image Logo"));
    EXPECT_EQ(The<QLabel>("picture").pixmap().size(), QSize(12, 8));
    List().setCurrentRow(1);
    EXPECT_EQ(Label("picture"), "No picture that can be shown");
    EXPECT_EQ(Label("about"), "image/png, 0 bytes\nNot used");
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Text(), Report());
    EXPECT_EQ(m_model.Source().UndoCount(), 0U);
}

TEST_F(PicturesDialogTest, APictureIsAddedFromAFile) {
    const QByteArray bytes = Png(400, 300);
    EXPECT_TRUE(AddFile(File("my tree.png", bytes)));
    EXPECT_EQ(The<QLineEdit>("name").text(), "mytree");
    EXPECT_TRUE(AddFile(File("Tree.png", bytes)));
    EXPECT_EQ(The<QLineEdit>("name").text(), "Tree2");
    Ok();
    EXPECT_THAT(Text(),
                HasSubstr("    <EmbeddedImage Name=\"mytree\">\n      <MIMEType>image/png</MIMEType>\n"
                          "      <ImageData>" +
                          bytes.toBase64().toStdString() + "</ImageData>\n    </EmbeddedImage>\n"));
    EXPECT_EQ(m_model.Source().UndoName(), "Change Pictures");
    EXPECT_EQ(m_model.Source().UndoCount(), 1U);
    EXPECT_EQ(BytesOfPicture(m_model.Source(), 3), bytes.toStdString());
}

TEST_F(PicturesDialogTest, ImagesFollowANewName) {
    Type("name", "Oak");
    EXPECT_EQ(List().item(0)->text(), "Oak");
    Ok();
    EXPECT_THAT(Text(), HasSubstr("<EmbeddedImage Name=\"Oak\">"));
    EXPECT_THAT(Text(), HasSubstr("<Value>Oak</Value>"));
}

TEST_F(PicturesDialogTest, WhatIsUsedStays) {
    Click("remove");
    EXPECT_EQ(Label("picturesNote"), "Tree is used and stays. Image Logo");
    List().setCurrentRow(1);
    Click("remove");
    Ok();
    EXPECT_THAT(Text(), Not(HasSubstr("Broken")));
    EXPECT_THAT(Text(), HasSubstr("<EmbeddedImage Name=\"Tree\">"));
}

TEST_F(PicturesDialogTest, WhatCannotBeIsRefused) {
    Type("name", "broken");
    Ok();
    EXPECT_EQ(Label("nameNote"), "Another picture has the name broken");
    Type("name", "a b");
    Ok();
    EXPECT_EQ(Label("nameNote"),
              "\"a b\" is not a valid name: names begin with a letter or _ and continue with letters, digits "
              "and _");
    const QString text = File("text.png", "no picture");
    EXPECT_FALSE(AddFile(text));
    EXPECT_EQ(Label("picturesNote"), "Image \"text.png\" is none of PNG, JPEG, GIF and BMP");
    EXPECT_FALSE(AddFile(File("empty.png", "")));
    EXPECT_EQ(Label("picturesNote"), "Image \"empty.png\" is empty");
    EXPECT_FALSE(AddFile(File("cut.png", Png(300, 200).chopped(20))));
    EXPECT_EQ(Label("picturesNote"), "Image \"cut.png\" is damaged and cannot be read");
    EXPECT_FALSE(AddFile(File("huge.png", HugePng())));
    EXPECT_EQ(Label("picturesNote"), "Image \"huge.png\" has more than 64 million pixels");
    EXPECT_FALSE(AddFile(text + "x"));
    EXPECT_EQ(Label("picturesNote"), text.toStdString() + "x cannot be read: No such file or directory");
    EXPECT_EQ(Text(), Report());
}

}  // namespace
}  // namespace designer
