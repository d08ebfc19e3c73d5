// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/picture.h"

#include <QCryptographicHash>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "rdl/image/decoder.h"
#include "rdl/layout/model/image_size.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

using layout::ImageSize;
using layout::Instance;

constexpr double LongestSide = 1584;  // points: 22 inches

std::string Digest(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())),
                                    QCryptographicHash::Sha256)
        .toStdString();
}

// English metric units, 12,700 to a point; more than 0.
std::string Units(double points) {
    constexpr double UnitsOfPoint = 12'700;
    const double bounded = std::isfinite(points) ? std::clamp(points, 0.05, LongestSide) : 1;
    return std::to_string(std::llround(bounded * UnitsOfPoint));
}

// The share that is cut off a side, in thousandths of a percent.
std::string Share(double whole, double shown) {
    constexpr double Whole = 100'000;
    return std::to_string(whole > shown ? std::llround((1 - shown / whole) * Whole) : 0);
}

void AppendNames(const char* element, int number, const Instance& item, std::string& out) {
    out += element;
    AppendAttribute("id", number, out);
    AppendAttribute("name", item.name.empty() ? "Image" : item.name, out);
    if (!item.toolTip.empty()) {
        AppendAttribute("descr", item.toolTip, out);
    }
    out += "/>";
}

}  // namespace

const std::string& DocxPictures::FileOf(const Instance& item) {
    if (m_last == item.imageBytes) {
        return m_lastFile;
    }
    const image::Type type = TypeOfImage(item);
    std::string& file = m_files[Digest(*item.imageBytes)];
    if (file.empty()) {
        const bool stays = type == image::Type::Png || type == image::Type::Jpeg;
        const std::string name =
            "media/image" + std::to_string(m_files.size()) + (type == image::Type::Jpeg ? ".jpeg" : ".png");
        m_archive.AddStored("word/" + name,
                            stays ? *item.imageBytes : image::AsPng(*item.imageBytes, item.name));
        file = name;
    }
    m_last = item.imageBytes;
    m_lastFile = file;
    return m_lastFile;
}

void DocxPictures::Append(const Instance& item, DocxRelations& relations, std::string& out) {
    if (!item.imageBytes || item.imageBytes->empty()) {
        return;
    }
    const std::string id = relations.Add("image", FileOf(item));
    const ImageSize whole = ShownSize(item, layout::SizeOfImage(*item.imageBytes));
    ImageSize shown = whole;
    std::string cut;
    if (item.sizing == Instance::Sizing::Clip) {
        shown = {std::min(whole.width, std::fabs(item.width)),
                 std::min(whole.height, std::fabs(item.height))};
        AppendAttribute("r", Share(whole.width, shown.width), cut);
        AppendAttribute("b", Share(whole.height, shown.height), cut);
        cut = "<a:srcRect" + cut + "/>";
    }
    const std::string extent = " cx=\"" + Units(shown.width) + "\" cy=\"" + Units(shown.height) + "\"/>";
    ++m_count;
    out += "<w:r><w:drawing><wp:inline distT=\"0\" distB=\"0\" distL=\"0\" distR=\"0\"><wp:extent" + extent;
    AppendNames("<wp:docPr", m_count, item, out);
    out +=
        "<a:graphic><a:graphicData uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\">"
        "<pic:pic><pic:nvPicPr>";
    AppendNames("<pic:cNvPr", m_count, item, out);
    out += "<pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip r:embed=\"" + id + "\"/>" + cut +
           "<a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm><a:off x=\"0\" "
           "y=\"0\"/><a:ext" +
           extent +
           "</a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom></pic:spPr></pic:pic></a:graphicData>"
           "</a:graphic></wp:inline></w:drawing></w:r>";
}

}  // namespace rdl::writers
