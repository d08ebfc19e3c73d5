// SPDX-License-Identifier: GPL-3.0-or-later
// Items that the engine refuses: the others are drawn, and the pane Problems has each of them once.
#include <QBuffer>
#include <QTimer>

#include "named_file.h"
#include "window_fixture.h"

namespace designer::test {
namespace {

QByteArray SmallPng() {
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

std::string With(const std::string& items, const std::string& pictures = "") {
    std::string report = SmallReport();
    report.insert(report.find("        </ReportItems>"), items);
    report.insert(report.find("</Report>"), pictures);
    return report;
}

std::string Box(const std::string& name, const std::string& width) {
    return "<Textbox Name=\"" + name + "\"><Top>2cm</Top><Height>1cm</Height><Width>" + width +
           "</Width><Paragraphs><Paragraph><TextRuns><TextRun><Value>x</Value></TextRun></TextRuns>"
           "</Paragraph></Paragraphs></Textbox>\n";
}

std::string Picture(const std::string& name, const std::string& data) {
    return "<EmbeddedImage Name=\"" + name + "\"><MIMEType>image/png</MIMEType><ImageData>" + data +
           "</ImageData></EmbeddedImage>";
}

std::string ImageOf(const std::string& name, const std::string& picture, const std::string& left = "0cm") {
    return "<Image Name=\"" + name + "\"><Top>6cm</Top><Left>" + left +
           "</Left><Height>1cm</Height><Width>1cm</Width><Source>Embedded</Source><Value>" + picture +
           "</Value></Image>\n";
}

class Refused : public WindowTest {
 protected:
    explicit Refused(const std::string& report) : WindowTest(report) {}

    // Text is darker than the paper and the outlines.
    bool IsDrawn(const std::string& name) {
        const QImage picture = Canvas().viewport()->grab(Canvas().AreaOf(Id(name)).toRect()).toImage();
        int dark = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                dark += qGray(picture.pixel(x, y)) < 100 ? 1 : 0;
            }
        }
        return dark > 20;
    }
    QListWidget& Pane() { return Find<QListWidget>("problems"); }
    // The engine is asked after a pause.
    std::string Problems(int count) {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return Pane().count() == count && Pane().item(0)->text() != "No problems"; }));
        std::string all;
        for (int row = 0; row < Pane().count(); ++row) {
            all += Pane().item(row)->text().toStdString() + "\n";
        }
        return all;
    }
    std::string SelectedBy(int row) {
        QTest::mouseClick(Pane().viewport(), Qt::LeftButton, {},
                          Pane().visualItemRect(Pane().item(row)).center());
        Settle();
        return Selected();
    }
    static std::size_t Times(const std::string& text, const std::string& part) {
        std::size_t times = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
            ++times;
        }
        return times;
    }
};

class WrongSizes : public Refused {
 protected:
    WrongSizes() : Refused(With(Box("Less", "-5cm") + Box("More", "99999cm"))) {}
};

TEST_F(WrongSizes, TheOthersAreDrawnAndEachIsNamedOnce) {
    EXPECT_TRUE(IsDrawn("Title"));
    EXPECT_TRUE(IsDrawn("Note"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Pane().count() >= 2; }));
    QTest::qWait(500);
    const std::string said = Problems(Pane().count());
    EXPECT_EQ(Times(said, "Textbox Less, Width: \"-5cm\" is out of range"), 1u) << said;
    EXPECT_EQ(Times(said, "Textbox More, Width: \"99999cm\" is out of range"), 1u) << said;
    EXPECT_EQ(SelectedBy(1), "More");
    EXPECT_EQ(SelectedBy(0), "Less");
}

class BadPictures : public Refused {
 protected:
    BadPictures()
        : Refused(With(ImageOf("First", "Cut") + ImageOf("Second", "Text") +
                           ImageOf("Third", "Good", "10cm") + ImageOf("Fourth", "Cut"),
                       "<EmbeddedImages>" + Picture("Cut", SmallPng().chopped(20).toBase64().toStdString()) +
                           Picture("Text", QByteArray("no picture").toBase64().toStdString()) +
                           Picture("Good", SmallPng().toBase64().toStdString()) + "</EmbeddedImages>\n")) {}
};

TEST_F(BadPictures, TheOthersAreDrawnAndAllAreNamed) {
    EXPECT_TRUE(IsDrawn("Title"));
    EXPECT_TRUE(IsDrawn("Third"));
    const std::string said = Problems(3);
    EXPECT_EQ(Times(said, "Image \"First\" is damaged and cannot be read"), 1u) << said;
    EXPECT_EQ(Times(said, "Image \"Second\" is none of PNG, JPEG, GIF and BMP"), 1u) << said;
    EXPECT_EQ(Times(said, "Image \"Fourth\" is damaged and cannot be read"), 1u) << said;
    EXPECT_EQ(SelectedBy(1), "Second");
}

class NoBase64 : public Refused {
 protected:
    NoBase64()
        : Refused(With(ImageOf("First", "Odd"),
                       "<EmbeddedImages>" + Picture("Odd", "?") + "</EmbeddedImages>")) {}
};

TEST_F(NoBase64, TheOthersAreDrawn) {
    EXPECT_TRUE(IsDrawn("Title"));
    EXPECT_EQ(Times(Problems(1), "EmbeddedImage Odd, ImageData: this is not base64"), 1u);
}

class WideItem : public Refused {
 protected:
    WideItem() : Refused(With(Box("Wide", "400cm"))) {}
};

TEST_F(WideItem, IsAProblemThatSelectsIt) {
    EXPECT_EQ(Problems(1),
              "Textbox Wide reaches to 400cm, and the page has room for 21cm: the rest goes to pages of its "
              "own\n");
    EXPECT_EQ(SelectedBy(0), "Wide");
}

class PickedPictures : public Refused {
 protected:
    PickedPictures() : Refused(SmallReport()) {}

    // Inserts an image with the file, and returns what a box says.
    std::string Insert(const char* name, const QByteArray& bytes) {
        const std::filesystem::path file = m_home / name;
        WriteBytes(file, bytes.toStdString());
        return NameFile(file, [this] { Run("insertImage"); });
    }
};

TEST_F(PickedPictures, AreRefusedIfNoReportCanShowThem) {
    const std::string before = Model().Source().Text();
    EXPECT_EQ(Insert("text.png", "no picture"), "Image \"text.png\" is none of PNG, JPEG, GIF and BMP|");
    EXPECT_EQ(Insert("empty.png", ""), "Image \"empty.png\" is empty|");
    EXPECT_EQ(Insert("cut.png", SmallPng().chopped(20)), "Image \"cut.png\" is damaged and cannot be read|");
    EXPECT_EQ(Model().Source().Text(), before);
    EXPECT_EQ(Insert("good.png", SmallPng()), "");
    EXPECT_EQ(Text("Image1", "Value"), "good");
}

}  // namespace
}  // namespace designer::test
