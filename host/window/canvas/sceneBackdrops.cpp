#include "window/canvas/sceneBackdrops.h"

#include "document/backdrops.h"
#include "document/document.h"
#include "draw/zelPictureStyle.h"
#include "window/canvas/screenMemory.h"

#include <algorithm>

namespace shading {

namespace {

QRectF aroundNodes(const Backdrop& backdrop, const SceneData& data)
{
    QRectF around;
    for (const NodePtr& node : backdrop.nodes()) {
        const auto box = data.boxByNode.find(node.get());
        if (box != data.boxByNode.end())
            around |= data.box(box->second).rect;
    }
    return around.isNull() ? around : aroundBoxes(around);
}

QRectF rectOf(Document& document, const Backdrop& backdrop, const SceneData& data)
{
    const std::optional<Frame> frame = frameOf(document, backdrop);
    if (!frame)
        return aroundNodes(backdrop, data);
    return {pointOf(frame->first),
            QSizeF(frame->width * kPositionWidth, frame->height * kPositionHeight)};
}

} // namespace

QRectF aroundBoxes(const QRectF& boxes)
{
    return boxes.adjusted(-kGridWidth, -zelDraw::kFrameHeader - kGridHeight / 2, kGridWidth,
                          kGridHeight);
}

QRectF readBackdrops(Document& document, ZEL::Compound& compound, SceneData& data)
{
    std::vector<SceneBackdrop> backdrops;
    for (const BackdropPtr& backdrop : document.backdrops().in(compound)) {
        const QRectF rect = rectOf(document, *backdrop, data);
        if (!rect.isNull())
            backdrops.push_back({backdrop, rect, data.texts.add(backdrop->name())});
    }
    QRectF area;
    const auto isSame = [](const SceneBackdrop& a, const SceneBackdrop& b) {
        return a.backdrop == b.backdrop && a.rect == b.rect && a.title == b.title;
    };
    if (!std::equal(backdrops.begin(), backdrops.end(), data.backdrops.begin(),
                    data.backdrops.end(), isSame)) {
        for (const std::vector<SceneBackdrop>* const list : {&backdrops, &data.backdrops}) {
            for (const SceneBackdrop& backdrop : *list)
                area |= backdrop.rect;
        }
    }
    data.backdrops = std::move(backdrops);
    return area;
}

} // namespace shading
