#include "platform/rdl/data/xml_document.h"

#include <QXmlStreamReader>

#include "platform/rdl/data/message.h"
#include "platform/rdl/definition/attribute_count.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

constexpr std::size_t DeepestElement = 100;
constexpr std::size_t MostElements = 5'000'000;
constexpr std::size_t MostAttributes = 4'096;  // of an element: the columns of a row

[[noreturn]] void Fail(const QXmlStreamReader& reader, const std::string& what) {
    throw Error("the XML is not usable at line " + std::to_string(reader.lineNumber()) + ", column " +
                std::to_string(reader.columnNumber()) + ": " + what);
}

void ReadAttributes(const QXmlStreamReader& reader, XmlNode& node) {
    for (const QXmlStreamAttribute& attribute : reader.attributes()) {
        const std::string name = attribute.name().toString().toStdString();
        if (name == "nil" && !attribute.namespaceUri().isEmpty()) {
            node.nil = attribute.value() == QLatin1String("true") || attribute.value() == QLatin1String("1");
        } else {
            node.attributes.emplace_back(name, attribute.value().toString().toStdString());
        }
    }
}

}  // namespace

const XmlNode* XmlDocument::Child(const XmlNode& parent, std::string_view name) const {
    for (const std::size_t child : parent.children) {
        if (nodes[child].name == name) {
            return &nodes[child];
        }
    }
    return nullptr;
}

std::string XmlDocument::ChildText(const XmlNode& parent, std::string_view name) const {
    const XmlNode* child = Child(parent, name);
    return child ? std::string(Trimmed(child->text)) : std::string();
}

XmlDocument ParseXml(std::string_view bytes) {
    if (const std::size_t line = LineOfTooManyAttributes(bytes, MostAttributes)) {
        throw Error("the XML is not usable at line " + std::to_string(line) + ": an element has more than " +
                    std::to_string(MostAttributes) + " attributes");
    }
    XmlDocument document;
    std::vector<std::size_t> open;
    QXmlStreamReader reader(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::DTD:
                Fail(reader, "a document type is not allowed");
            case QXmlStreamReader::StartElement: {
                if (open.size() >= DeepestElement || document.nodes.size() >= MostElements) {
                    Fail(reader, "it is nested too deeply or too long");
                }
                XmlNode node;
                node.name = reader.name().toString().toStdString();
                ReadAttributes(reader, node);
                if (!open.empty()) {
                    document.nodes[open.back()].children.push_back(document.nodes.size());
                }
                open.push_back(document.nodes.size());
                document.nodes.push_back(std::move(node));
                break;
            }
            case QXmlStreamReader::Characters:
                document.nodes[open.back()].text += reader.text().toString().toStdString();
                break;
            case QXmlStreamReader::EndElement:
                open.pop_back();
                break;
            default:
                break;
        }
    }
    if (reader.hasError()) {
        Fail(reader, CleanText(reader.errorString().toStdString()));
    }
    return document;
}

}  // namespace rdl::data
