// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/picture_cache.h"

#include <cstdint>
#include <type_traits>

#include "rdl/layout/drawing/drawing.h"

namespace rdl::layout {
namespace {

constexpr std::size_t MostKept = 256, MostBytes = 64u << 10;  // of what is drawn

// Everything that makes a drawing look as it does, as text.
class Fingerprint {
 public:
    explicit Fingerprint(const DrawingInstance& drawing) {
        Put(drawing.content.width);
        Put(drawing.content.height);
        Put(drawing.background);
        for (const Op& op : drawing.content.ops) {
            Put(op.index());
            std::visit(*this, op);
        }
        for (const text::Glyph& glyph : drawing.content.glyphs) {
            Put(glyph.id);
            Put(glyph.advance);
            Put(glyph.dx);
            Put(glyph.dy);
        }
    }

    std::string Take() { return std::move(m_text); }
    std::vector<PictureCache::Bytes> TakeImages() { return std::move(m_images); }

    void operator()(const TextOp& op) {
        Put(op.x);
        Put(op.baseline);
        Put(op.size);
        Put(op.color);
        Put(op.font);
        Put(op.glyphCount);
        Put(op.rotation);
    }
    void operator()(const LineOp& op) {
        for (const double place : {op.x1, op.y1, op.x2, op.y2}) {
            Put(place);
        }
        Put(op.width);
        Put(op.color);
        Put(op.style);
    }
    void operator()(const RectOp& op) {
        Area(op);
        Put(op.color);
    }
    void operator()(const PathOp& op) {
        for (const PathOp::Segment& segment : op.segments) {
            Put(segment.kind);
            const int count = segment.kind == PathOp::Segment::CurveTo ? 3
                              : segment.kind == PathOp::Segment::Close ? 0
                                                                       : 1;
            for (int i = 0; i < count; ++i) {
                Put(segment.x[i]);
                Put(segment.y[i]);
            }
        }
        Put(op.fill);
        Put(op.stroke);
        Put(op.strokeWidth);
        Put(op.strokeStyle);
    }
    void operator()(const ImageOp& op) {
        Area(op);
        Put(reinterpret_cast<std::uintptr_t>(op.bytes.get()));
        m_images.push_back(op.bytes);
    }
    void operator()(const ClipOp& op) { Area(op); }
    void operator()(const UnclipOp&) {}
    void operator()(const LinkOp&) {}
    void operator()(const AnchorOp&) {}

 private:
    template <typename Value>
    void Put(const Value& value) {
        static_assert(std::is_trivially_copyable_v<Value>);
        m_text.append(reinterpret_cast<const char*>(&value), sizeof(Value));
    }
    template <typename Placed>
    void Area(const Placed& op) {
        for (const double place : {op.x, op.y, op.width, op.height}) {
            Put(place);
        }
    }

    std::string m_text;
    std::vector<PictureCache::Bytes> m_images;
};

}  // namespace

PictureCache::Bytes PictureCache::Of(const DrawingInstance& drawing,
                                     const std::function<Bytes(const DrawingInstance&)>& paint) {
    Fingerprint fingerprint(drawing);
    std::string key = fingerprint.Take();
    if (key.size() > MostBytes) {
        return paint(drawing);
    }
    if (const auto known = m_made.find(key); known != m_made.end()) {
        return known->second.picture;
    }
    if (m_made.size() >= MostKept) {
        m_made.clear();
    }
    Made made{paint(drawing), fingerprint.TakeImages()};
    return m_made.emplace(std::move(key), std::move(made)).first->second.picture;
}

}  // namespace rdl::layout
