// SPDX-License-Identifier: GPL-3.0-or-later
// Built-in fields and pictures that are dragged from the data of the report to the page.
#include <QMimeData>
#include <QTreeWidget>
#include <memory>

#include "window_fixture.h"

namespace designer::test {
namespace {

class DroppedValues : public WindowTest {
 protected:
    DroppedValues() {
        Model().Edit("Picture", [](Document& document) {
            InsertXml(
                document, EnsureChild(document, document.Root(), "EmbeddedImages"),
                "<EmbeddedImage Name=\"Logo\"><MIMEType>image/png</MIMEType><ImageData>iVBORw0KGgoAAAANSUhE"
                "UgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGNgYGBgAAAABQABh6FO1AAAAABJRU5ErkJggg=="
                "</ImageData></EmbeddedImage>");
        });
        Settle();
    }

    // What the pane gives when the row is dragged.
    void Drop(const char* row, QPoint at) {
        auto& data = Find<QTreeWidget>("reportData");
        const QModelIndex index =
            data.model()->match(data.model()->index(0, 0), Qt::DisplayRole, row, 1, Qt::MatchRecursive).at(0);
        EXPECT_TRUE(index.flags() & Qt::ItemIsDragEnabled);
        const std::unique_ptr<QMimeData> mime(data.model()->mimeData({index}));
        m_wasTaken = DropOn(*Canvas().viewport(), *mime, at);
        Settle();
    }

    bool m_wasTaken = false;
};

TEST_F(DroppedValues, ABuiltInFieldBecomesATextBox) {
    Drop("PageNumber", InBody(8, 2));
    EXPECT_EQ(Selected(), "Textbox1");
    EXPECT_EQ(Corner("Textbox1"), "8cm 2cm");
    EXPECT_EQ(Value("Textbox1"), "=Globals!PageNumber");
    EXPECT_EQ(UndoName(), "Show [&PageNumber]");
    Drop("ReportName", At("Title"));
    EXPECT_EQ(Value("Title"), "=Globals!ReportName");
    EXPECT_EQ(Selected(), "Title");
}

TEST_F(DroppedValues, APictureBecomesAnImageOrThatOfOne) {
    Drop("Logo", InBody(8, 2));
    EXPECT_EQ(Selected(), "Image1");
    EXPECT_EQ(Text("Image1", "Source") + " " + Text("Image1", "Value"), "Embedded Logo");
    Model().Edit("Other", [&](Document& document) { SetText(document, Id("Image1"), "Value", "None"); });
    Drop("Logo", At("Image1"));
    EXPECT_EQ(Text("Image1", "Value"), "Logo");
    const std::string before = Model().Source().Text();
    Drop("Logo", At("Title"));
    EXPECT_FALSE(m_wasTaken);
    EXPECT_EQ(Model().Source().Text(), before);
    Select({"Image1"});
    Model().Edit("Other", [&](Document& document) { SetText(document, Id("Image1"), "Value", "None"); });
    auto& data = Find<QTreeWidget>("reportData");
    emit data.itemActivated(data.findItems("Logo", Qt::MatchExactly | Qt::MatchRecursive).at(0), 0);
    EXPECT_EQ(Text("Image1", "Value"), "Logo");
}

}  // namespace
}  // namespace designer::test
