#pragma once

#include "localization/autoresizing.h"

#include <QLayout>
#include <QRect>
#include <memory>
#include <vector>

namespace plenzo {

/// The layout of a container whose views keep their places by springs and struts: each frame
/// follows from the designed one, the size that it was designed for, and what of it is flexible,
/// never from the frame before. Hidden views keep their frames. Read from right to left, all is
/// mirrored.
class SpringsAndStruts final : public QLayout {
public:
    /// The container's layout from now on, with the frames and the masks (the dynamic property
    /// "autoresizingMask") that its children have, in its size or, where it has one, the size in
    /// its dynamic property "designedSize". The container owns it. Null when the container has
    /// another layout, or no child with a mask.
    static SpringsAndStruts* install(QWidget& container);

    /// That of the container; null when it has none.
    [[nodiscard]] static SpringsAndStruts* of(const QWidget* container);

    /// The frame of a view of the container, as if it were read from left to right; empty for
    /// another widget.
    [[nodiscard]] QRect frame(const QWidget* view) const;

    /// Gives a view another place, from which it then follows the container; as if everything were
    /// read from left to right. Does nothing for a widget that is no view of the container.
    void setFrame(QWidget* view, const QRect& frame);

    /// The same in the size that the container was designed for, whatever it has now.
    [[nodiscard]] Frame designedFrame(const QWidget* view) const;
    void setDesignedFrame(QWidget* view, const Frame& frame);
    [[nodiscard]] FrameSize designedSize() const { return m_designedSize; }

    [[nodiscard]] AutoresizingMask mask(const QWidget* view) const;

    /// Gives all views their places now, and theirs, when a size has just been set.
    void layOut();

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& area) override;

private:
    struct Place {
        std::unique_ptr<QLayoutItem> item;
        Frame designed;
        FrameSize designedFor;
        AutoresizingMask mask;
    };

    explicit SpringsAndStruts(FrameSize designedSize);
    [[nodiscard]] const Place* place(const QWidget* view) const;
    [[nodiscard]] Frame frameIn(FrameSize size, const QWidget* view) const;
    void setFrameIn(FrameSize size, const QWidget* view, const Frame& frame);
    [[nodiscard]] FrameSize size() const;

    FrameSize m_designedSize;
    std::vector<Place> m_places;
};

} // namespace plenzo
