#include "platform/rdl/definition/xml_tree.h"

#include <QtCore/QByteArray>
#include <QtCore/QXmlStreamReader>

#include "platform/rdl/definition/attribute_count.h"
#include "platform/rdl/definition/sniff.h"
#include "platform/runtime.h"

namespace rdl {
namespace {

constexpr std::string_view NamespaceBegin = "http://schemas.microsoft.com/sqlserver/reporting/";
constexpr std::string_view NamespaceEnd = "/reportdefinition";

std::string ToUtf8(QStringView text) {
    return text.toUtf8().toStdString();
}

bool IsReportNamespace(QStringView uri) {
    const std::string text = ToUtf8(uri.toString().toLower());
    return text.empty() || (text.starts_with(NamespaceBegin) && text.ends_with(NamespaceEnd));
}

// A field's type and the report's font are written by designers under names of their own.
bool IsKeptFromOthers(QStringView name) {
    return name == u"TypeName" || name == u"DefaultFontFamily";
}

class TreeReader {
 public:
    TreeReader(std::string_view bytes, std::string fileName, const DefinitionLimits& limits)
        : m_reader(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))),
          m_fileName(std::move(fileName)),
          m_limits(limits) {}

    XmlElement Read() {
        while (!m_reader.atEnd()) {
            Take(m_reader.readNext());
        }
        if (m_reader.hasError()) {
            FailAsMalformed();
        }
        return std::move(m_root);
    }

 private:
    void Take(QXmlStreamReader::TokenType token) {
        switch (token) {
            case QXmlStreamReader::DTD:
                Fail("it declares a document type, which a report never needs and which is refused");
            case QXmlStreamReader::StartElement:
                Begin();
                break;
            case QXmlStreamReader::EndElement:
                End();
                break;
            case QXmlStreamReader::Characters:
                if (!m_skipped && !m_open.empty()) {
                    m_open.back()->text += ToUtf8(m_reader.text());
                }
                break;
            default:
                break;
        }
    }

    void Begin() {
        if (++m_depth > m_limits.depth) {
            Fail("elements are nested more than " + std::to_string(m_limits.depth) + " deep");
        }
        if (++m_count > m_limits.elements) {
            Fail("there are more than " + std::to_string(m_limits.elements) + " elements");
        }
        if (m_skipped || (!m_open.empty() && IsForeign())) {
            ++m_skipped;
            return;
        }
        if (m_open.empty()) {
            CheckRoot();
            m_open.push_back(&m_root);
            m_preserve.push_back(false);
        } else {
            m_preserve.push_back(m_preserve.back());
            m_open.push_back(&m_open.back()->children.emplace_back());
        }
        XmlElement& element = *m_open.back();
        element.name = ToUtf8(m_reader.name());
        element.line = static_cast<int>(m_reader.lineNumber());
        TakeAttributes(element);
    }

    void TakeAttributes(XmlElement& element) {
        for (const QXmlStreamAttribute& attribute : m_reader.attributes()) {
            if (attribute.qualifiedName() == u"Name") {
                element.nameAttribute = ToUtf8(attribute.value());
            } else if (attribute.qualifiedName() == u"File") {
                element.fileAttribute = ToUtf8(attribute.value());
            } else if (attribute.qualifiedName() == u"xml:space") {
                m_preserve.back() = attribute.value() == u"preserve";
            } else if (attribute.name() == u"nil") {
                element.nil = attribute.value() == u"true" || attribute.value() == u"1";
            }
        }
    }

    void End() {
        --m_depth;
        if (m_skipped) {
            --m_skipped;
            return;
        }
        XmlElement& element = *m_open.back();
        if (!m_preserve.back() && Trimmed(element.text).empty()) {
            element.text.clear();
        }
        m_open.pop_back();
        m_preserve.pop_back();
    }

    bool IsForeign() const {
        return m_reader.namespaceUri() != m_namespace && !IsKeptFromOthers(m_reader.name());
    }

    void CheckRoot() {
        m_namespace = m_reader.namespaceUri().toString();
        const std::string name = WithoutMarks(ToUtf8(m_reader.name()));
        if (name != "Report") {
            throw Error(m_fileName + " is XML of another kind, not an RDL report: its root element is \"" +
                        name + "\"");
        }
        if (!IsReportNamespace(m_namespace)) {
            throw Error(m_fileName +
                        " is XML of another kind, not an RDL report: its root element belongs to \"" +
                        WithoutMarks(ToUtf8(m_namespace)) + "\"");
        }
    }

    [[noreturn]] void Fail(const std::string& what) {
        throw Error(m_fileName + ", line " + std::to_string(m_reader.lineNumber()) + ": " + what);
    }

    [[noreturn]] void FailAsMalformed() {
        if (m_reader.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
            throw Error(m_fileName + " is cut off: it ends at line " + std::to_string(m_reader.lineNumber()) +
                        (m_open.empty()
                             ? std::string(" before its first element")
                             : " within the element \"" + WithoutMarks(m_open.back()->name) + "\""));
        }
        std::string why = WithoutMarks(ToUtf8(m_reader.errorString()));
        while (why.ends_with('.')) {
            why.pop_back();
        }
        Fail("this is not well-formed XML: " + why);
    }

    QXmlStreamReader m_reader;
    std::string m_fileName;
    const DefinitionLimits& m_limits;
    QString m_namespace;
    XmlElement m_root;
    std::vector<XmlElement*> m_open;  // from the root to the innermost
    std::vector<bool> m_preserve;     // xml:space, beside m_open
    int m_depth = 0, m_count = 0;
    int m_skipped = 0;  // how deep within an element that is left out
};

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

const XmlElement* XmlElement::Child(std::string_view childName) const {
    for (const XmlElement& child : children) {
        if (child.name == childName) {
            return &child;
        }
    }
    return nullptr;
}

const XmlElement* XmlElement::Find(std::initializer_list<std::string_view> path) const {
    const XmlElement* element = this;
    for (const std::string_view step : path) {
        element = element->Child(step);
        if (!element) {
            return nullptr;
        }
    }
    return element;
}

std::string XmlElement::ChildText(std::string_view childName) const {
    const XmlElement* child = Child(childName);
    return child ? std::string(Trimmed(child->text)) : std::string();
}

XmlElement ReadXmlTree(std::string_view bytes, const std::string& fileName, const DefinitionLimits& limits) {
    const std::string name = WithoutMarks(fileName);
    if (const std::string what = DescribeIfNotXml(bytes); !what.empty()) {
        throw Error(name + " " + what);
    }
    if (bytes.size() > limits.bytes) {
        throw Error(name + " is larger than a report may be (" + std::to_string(limits.bytes >> 20) + " MB)");
    }
    if (const std::size_t line = LineOfTooManyAttributes(bytes, limits.attributes)) {
        throw Error(name + ", line " + std::to_string(line) + ": an element has more than " +
                    std::to_string(limits.attributes) + " attributes");
    }
    return TreeReader(bytes, name, limits).Read();
}

}  // namespace rdl
