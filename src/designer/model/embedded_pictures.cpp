// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/embedded_pictures.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QObject>
#include <utility>

#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/tables/tablix_shape.h"
#include "rdl/api/identifier.h"
#include "rdl/api/pictures.h"

namespace designer {
namespace {

constexpr qint64 MostPictureBytes = 16 << 20;

std::vector<ElementId> PictureElementsOf(const Document& document) {
    return ChildrenNamed(document, document.Root(), "EmbeddedImages", "EmbeddedImage");
}

std::string XmlOfPicture(const EmbeddedPicture& picture) {
    const QByteArray data = QByteArray::fromStdString(picture.bytes).toBase64();
    return "<EmbeddedImage Name=\"" + EscapedValue(picture.name, '"') + "\"><MIMEType>" +
           EscapedText(picture.type, "") + "</MIMEType><ImageData>" + data.toStdString() +
           "</ImageData></EmbeddedImage>";
}

}  // namespace

// BytesOf of the animation reads a file as well: a failure there is a run-time error with a number.
QString ReadPictureFile(const QString& file, EmbeddedPicture& picture) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) {
        return QObject::tr("%1 cannot be read: %2").arg(file, source.errorString());
    }
    std::string bytes = source.read(MostPictureBytes + 1).toStdString();
    if (source.error() != QFileDevice::NoError) {
        return QObject::tr("%1 cannot be read: %2").arg(file, source.errorString());
    }
    if (static_cast<qint64>(bytes.size()) > MostPictureBytes) {
        return QObject::tr("%1 is larger than 16 MB").arg(file);
    }
    const std::string fault = rdl::FaultOfPicture(bytes, QFileInfo(file).fileName().toStdString());
    if (fault.empty()) {
        picture.type = rdl::TypeOfPicture(bytes);
        picture.bytes = std::move(bytes);
    }
    return QString::fromStdString(fault);
}

std::vector<EmbeddedPicture> EmbeddedPicturesOf(const Document& document) {
    std::vector<EmbeddedPicture> pictures;
    for (const ElementId id : PictureElementsOf(document)) {
        pictures.push_back({static_cast<int>(pictures.size()), document.Attribute(id, "Name").value_or(""),
                            document.TextAt(id, "MIMEType").value_or("")});
    }
    return pictures;
}

std::string BytesOfPicture(const Document& document, int place) {
    const std::vector<ElementId> ids = PictureElementsOf(document);
    const std::string text =
        document.TextAt(ids.at(static_cast<std::size_t>(place)), "ImageData").value_or("");
    return QByteArray::fromBase64(QByteArray::fromStdString(text)).toStdString();
}

std::string NameOfPictureFile(const QString& file) {
    std::string name;
    for (const char c : QFileInfo(file).completeBaseName().toStdString()) {
        if (rdl::IsIdentifier("_" + std::string(1, c))) {
            name += c;
        }
    }
    return rdl::IsIdentifier(name) ? name : "Picture1";
}

void PutEmbeddedPictures(Document& document, const std::vector<EmbeddedPicture>& pictures) {
    std::vector<int> places;
    std::vector<std::string> names;
    for (const EmbeddedPicture& picture : pictures) {
        places.push_back(picture.place);
        names.push_back(picture.name);
    }
    const std::vector<ElementId> ids =
        PutRows(document, document.Root(), "EmbeddedImages", "EmbeddedImage", places,
                [&](std::size_t row) { return XmlOfPicture(pictures[row]); });
    RenameAll(document, ids, names);
}

}  // namespace designer
