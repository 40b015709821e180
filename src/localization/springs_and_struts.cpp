#include "localization/springs_and_struts.h"

#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace plenzo {

namespace {

constexpr const char* maskProperty = "autoresizingMask";
constexpr const char* designedSizeProperty = "designedSize";

AutoresizingMask maskOf(const QWidget& view) {
    return autoresizingMask(view.property(maskProperty).toString().toStdString());
}

std::vector<QWidget*> viewsOf(const QWidget& container) {
    std::vector<QWidget*> views;
    for (QObject* child : container.children()) {
        auto* const view = qobject_cast<QWidget*>(child);
        if (view != nullptr && !view->isWindow()) {
            views.push_back(view);
        }
    }
    return views;
}

bool hasMask(const QWidget* view) {
    return view->property(maskProperty).isValid();
}

FrameSize designedSizeOf(const QWidget& container) {
    const QVariant designed = container.property(designedSizeProperty);
    const QSize size = designed.isValid() ? designed.toSize() : container.size();
    return {size.width(), size.height()};
}

Frame frameOf(const QRect& rectangle) {
    return {rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height()};
}

QRect rectangleOf(const Frame& frame) {
    return {frame.x, frame.y, frame.width, frame.height};
}

} // namespace

SpringsAndStruts::SpringsAndStruts(FrameSize designedSize) : m_designedSize(designedSize) {
    setContentsMargins(0, 0, 0, 0);
    // The container's minimum size is its own affair.
    setSizeConstraint(SetNoConstraint);
}

SpringsAndStruts* SpringsAndStruts::install(QWidget& container) {
    const std::vector<QWidget*> views = viewsOf(container);
    if (container.layout() != nullptr || std::ranges::none_of(views, hasMask)) {
        return nullptr;
    }
    auto layout =
        std::unique_ptr<SpringsAndStruts>(new SpringsAndStruts(designedSizeOf(container)));
    SpringsAndStruts* const installed = layout.get();
    container.setLayout(layout.release());
    for (QWidget* view : views) {
        installed->addWidget(view);
    }
    return installed;
}

SpringsAndStruts* SpringsAndStruts::of(const QWidget* container) {
    return container != nullptr ? dynamic_cast<SpringsAndStruts*>(container->layout()) : nullptr;
}

FrameSize SpringsAndStruts::size() const {
    const QWidget* const container = parentWidget();
    return container != nullptr ? FrameSize{container->width(), container->height()}
                                : m_designedSize;
}

const SpringsAndStruts::Place* SpringsAndStruts::place(const QWidget* view) const {
    const auto found = std::ranges::find_if(
        m_places, [view](const Place& place) { return place.item->widget() == view; });
    return view != nullptr && found != m_places.end() ? &*found : nullptr;
}

Frame SpringsAndStruts::frameIn(FrameSize size, const QWidget* view) const {
    const Place* const found = place(view);
    return found != nullptr ? autoresized(found->designed, found->designedFor, size, found->mask)
                            : Frame();
}

void SpringsAndStruts::setFrameIn(FrameSize size, const QWidget* view, const Frame& frame) {
    for (Place& place : m_places) {
        if (view != nullptr && place.item->widget() == view) {
            place.designed = frame;
            place.designedFor = size;
        }
    }
}

QRect SpringsAndStruts::frame(const QWidget* view) const {
    return rectangleOf(frameIn(size(), view));
}

Frame SpringsAndStruts::designedFrame(const QWidget* view) const {
    return frameIn(m_designedSize, view);
}

void SpringsAndStruts::setDesignedFrame(QWidget* view, const Frame& frame) {
    setFrameIn(m_designedSize, view, frame);
}

AutoresizingMask SpringsAndStruts::mask(const QWidget* view) const {
    const Place* const found = place(view);
    return found != nullptr ? found->mask : AutoresizingMask();
}

void SpringsAndStruts::setFrame(QWidget* view, const QRect& frame) {
    setFrameIn(size(), view, frameOf(frame));
    layOut();
}

void SpringsAndStruts::layOut() {
    const FrameSize now = size();
    const bool isMirrored =
        parentWidget() != nullptr && parentWidget()->layoutDirection() == Qt::RightToLeft;
    for (const Place& place : m_places) {
        const Frame frame = autoresized(place.designed, place.designedFor, now, place.mask);
        QWidget* const view = place.item->widget();
        view->setGeometry(rectangleOf(isMirrored ? mirrored(frame, now.width) : frame));
        // What is not shown yet is told of its new size only when it is.
        if (SpringsAndStruts* const inner = of(view)) {
            inner->layOut();
        }
    }
}

void SpringsAndStruts::addItem(QLayoutItem* item) {
    std::unique_ptr<QLayoutItem> owned(item);
    if (const QWidget* const view = item->widget()) {
        m_places.push_back(
            {std::move(owned), frameOf(view->geometry()), m_designedSize, maskOf(*view)});
    }
}

QLayoutItem* SpringsAndStruts::itemAt(int index) const {
    return index >= 0 && index < count() ? m_places[static_cast<std::size_t>(index)].item.get()
                                         : nullptr;
}

QLayoutItem* SpringsAndStruts::takeAt(int index) {
    if (index < 0 || index >= count()) {
        return nullptr;
    }
    const auto taken = m_places.begin() + index;
    QLayoutItem* const item = taken->item.release();
    m_places.erase(taken);
    return item;
}

int SpringsAndStruts::count() const {
    return static_cast<int>(m_places.size());
}

QSize SpringsAndStruts::sizeHint() const {
    return {m_designedSize.width, m_designedSize.height};
}

QSize SpringsAndStruts::minimumSize() const {
    return {};
}

void SpringsAndStruts::setGeometry(const QRect& area) {
    QLayout::setGeometry(area);
    layOut();
}

} // namespace plenzo
