// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_codec.h"

#include <QByteArray>
#include <cstring>
#include <type_traits>

#include "rdl/values/error.h"

namespace rdl::screen {
namespace {

using namespace layout;

class Packer {
 public:
    explicit Packer(PageImages& images) : m_images(images) {}
    const std::string& Bytes() const { return m_bytes; }

    template <typename T>
    void Put(const T& value) {
        static_assert(std::is_trivially_copyable_v<T>);
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <typename T>
    void PutAll(const T& values) {
        using Item = typename T::value_type;
        static_assert(std::is_trivially_copyable_v<Item>);
        Put(static_cast<std::uint32_t>(values.size()));
        m_bytes.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Item));
    }

    template <typename Op>
    void operator()(const Op& op) {
        Put(op);
    }
    void operator()(const PathOp& op) {
        PutAll(op.segments);
        Put(op.fill);
        Put(op.stroke);
        Put(op.strokeWidth);
        Put(op.strokeStyle);
    }
    void operator()(const ImageOp& op) {
        Put(Rect{op.x, op.y, op.width, op.height});
        Put(op.bytes != nullptr);
        if (op.bytes) {
            Put(m_images.Put(op.bytes));
        }
        PutAll(op.name);
    }
    void operator()(const LinkOp& op) {
        Put(Rect{op.x, op.y, op.width, op.height});
        PutAll(op.uri);
        PutAll(op.bookmark);
    }
    void operator()(const AnchorOp& op) {
        Put(Rect{op.x, op.y, 0, 0});
        PutAll(op.bookmark);
        PutAll(op.label);
        Put(op.level);
    }

    struct Rect {
        double x, y, width, height;
    };

 private:
    PageImages& m_images;
    std::string m_bytes;
};

class Unpacker {
 public:
    Unpacker(std::string_view bytes, PageImages& images) : m_bytes(bytes), m_images(images) {}

    template <typename T>
    void Get(T& value) {
        std::memcpy(static_cast<void*>(&value), Take(sizeof value), sizeof value);
    }
    template <typename T>
    T Get() {
        T value{};
        Get(value);
        return value;
    }
    template <typename T>
    void GetAll(T& values) {
        using Item = typename T::value_type;
        const auto count = Get<std::uint32_t>();
        const char* from = Take(count * sizeof(Item));
        values.resize(count);
        if (count > 0) {
            std::memcpy(static_cast<void*>(values.data()), from, count * sizeof(Item));
        }
    }

    template <typename Op>
    void operator()(Op& op) {
        Get(op);
    }
    void operator()(PathOp& op) {
        GetAll(op.segments);
        Get(op.fill);
        Get(op.stroke);
        Get(op.strokeWidth);
        Get(op.strokeStyle);
    }
    void operator()(ImageOp& op) {
        Area(op);
        if (Get<bool>()) {
            op.bytes = m_images.At(Get<std::uint32_t>());
        }
        GetAll(op.name);
    }
    void operator()(LinkOp& op) {
        Area(op);
        GetAll(op.uri);
        GetAll(op.bookmark);
    }
    void operator()(AnchorOp& op) {
        const auto place = Get<Packer::Rect>();
        op.x = place.x;
        op.y = place.y;
        GetAll(op.bookmark);
        GetAll(op.label);
        Get(op.level);
    }

 private:
    template <typename Op>
    void Area(Op& op) {
        const auto area = Get<Packer::Rect>();
        op.x = area.x;
        op.y = area.y;
        op.width = area.width;
        op.height = area.height;
    }
    const char* Take(std::size_t size) {
        if (size > m_bytes.size()) {
            throw Error("A page that was put by is damaged");
        }
        const char* at = m_bytes.data();
        m_bytes.remove_prefix(size);
        return at;
    }

    std::string_view m_bytes;
    PageImages& m_images;
};

template <std::size_t Index = 0>
Op OpOfKind(std::size_t kind) {
    if constexpr (Index + 1 < std::variant_size_v<Op>) {
        if (kind != Index) {
            return OpOfKind<Index + 1>(kind);
        }
    }
    return Op(std::in_place_index<Index>);
}

}  // namespace

std::string PackPage(const Page& page, PageImages& images) {
    Packer packer(images);
    packer.Put(page.width);
    packer.Put(page.height);
    packer.PutAll(page.glyphs);
    packer.PutAll(page.text);
    packer.Put(static_cast<std::uint32_t>(page.ops.size()));
    for (const Op& op : page.ops) {
        packer.Put(static_cast<std::uint8_t>(op.index()));
        std::visit([&](const auto& one) { packer(one); }, op);
    }
    constexpr int Fastest = 1;
    const std::string& bytes = packer.Bytes();
    return qCompress(reinterpret_cast<const uchar*>(bytes.data()), static_cast<qsizetype>(bytes.size()),
                     Fastest)
        .toStdString();
}

Page UnpackPage(std::string_view bytes, PageImages& images) {
    const QByteArray raw =
        qUncompress(reinterpret_cast<const uchar*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    Unpacker unpacker(std::string_view(raw.constData(), static_cast<std::size_t>(raw.size())), images);
    Page page;
    unpacker.Get(page.width);
    unpacker.Get(page.height);
    unpacker.GetAll(page.glyphs);
    unpacker.GetAll(page.text);
    const auto count = unpacker.Get<std::uint32_t>();
    page.ops.reserve(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        page.ops.push_back(OpOfKind(unpacker.Get<std::uint8_t>()));
        std::visit([&](auto& one) { unpacker(one); }, page.ops.back());
    }
    return page;
}

void AppendPage(Page& page, const Page& from) {
    const auto glyphs = static_cast<std::uint32_t>(page.glyphs.size());
    const auto text = static_cast<std::uint32_t>(page.text.size());
    page.glyphs.insert(page.glyphs.end(), from.glyphs.begin(), from.glyphs.end());
    page.text += from.text;
    for (const Op& op : from.ops) {
        page.ops.push_back(op);
        if (auto* moved = std::get_if<TextOp>(&page.ops.back())) {
            moved->firstGlyph += glyphs;
            moved->textBegin += text;
            moved->textEnd += text;
        }
    }
}

}  // namespace rdl::screen
