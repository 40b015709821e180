#include "localization/springs_and_struts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QWidget>
#include <memory>

namespace plenzo {
namespace {

/// A window of 200 by 100 with one view at 10, 20 of 50 by 30.
class SpringsAndStrutsInAWindow : public testing::Test {
protected:
    SpringsAndStrutsInAWindow() {
        window.resize(200, 100);
        view.setGeometry(10, 20, 50, 30);
    }
    SpringsAndStruts& installed(const char* mask) {
        view.setProperty("autoresizingMask", mask);
        return *SpringsAndStruts::install(window);
    }
    /// As on a screen, where a resize comes as an event.
    void show() {
        window.show();
        QApplication::processEvents();
    }

    QWidget window;
    QWidget& view = *new QWidget(&window);
};

TEST_F(SpringsAndStrutsInAWindow, FollowItsSize) {
    installed("width topMargin");
    show();
    EXPECT_EQ(view.geometry(), QRect(10, 20, 50, 30));
    window.resize(263, 151);
    EXPECT_EQ(view.geometry(), QRect(10, 71, 113, 30));
}

TEST_F(SpringsAndStrutsInAWindow, ComeBackWithoutDriftAfterManySizes) {
    installed("leftMargin width rightMargin topMargin height bottomMargin");
    show();
    for (int step = 0; step < 1000; ++step) {
        window.resize(1 + step * 37 % 611, 1 + step * 53 % 409);
    }
    window.resize(200, 100);
    EXPECT_EQ(view.geometry(), QRect(10, 20, 50, 30));
}

TEST_F(SpringsAndStrutsInAWindow, GiveTheirPlacesBeforeTheWindowIsShown) {
    auto* const inner = new QWidget(&view);
    inner->setGeometry(5, 5, 40, 20);
    inner->setProperty("autoresizingMask", "width");
    SpringsAndStruts& layout = installed("width");
    SpringsAndStruts::install(view);
    window.resize(300, 100);
    layout.layOut();
    EXPECT_EQ(view.width(), 150);
    EXPECT_EQ(inner->width(), 140);
}

TEST_F(SpringsAndStrutsInAWindow, AreMirroredFromRightToLeft) {
    SpringsAndStruts& layout = installed("rightMargin");
    show();
    window.setLayoutDirection(Qt::RightToLeft);
    QApplication::processEvents();
    EXPECT_EQ(view.geometry(), QRect(140, 20, 50, 30));
    EXPECT_EQ(layout.frame(&view), QRect(10, 20, 50, 30)) << "as read from left to right";
    window.resize(250, 100);
    EXPECT_EQ(view.geometry(), QRect(190, 20, 50, 30));
    layout.setFrame(&view, {0, 0, 50, 30});
    EXPECT_EQ(view.geometry(), QRect(200, 0, 50, 30));
    window.setLayoutDirection(Qt::LeftToRight);
    QApplication::processEvents();
    EXPECT_EQ(view.geometry(), QRect(0, 0, 50, 30));
}

TEST_F(SpringsAndStrutsInAWindow, TakeAFrameThatIsSetAsTheNewDesign) {
    SpringsAndStruts& layout = installed("leftMargin width");
    show();
    window.resize(233, 100);
    layout.setFrame(&view, {31, 20, 71, 30});
    EXPECT_EQ(view.geometry(), QRect(31, 20, 71, 30));
    window.resize(999, 100);
    window.resize(233, 100);
    EXPECT_EQ(view.geometry(), QRect(31, 20, 71, 30));
    layout.setFrame(&window, {1, 1, 1, 1});
    layout.setFrame(nullptr, {1, 1, 1, 1});
    EXPECT_EQ(layout.frame(nullptr), QRect());
}

TEST_F(SpringsAndStrutsInAWindow, KeepAHiddenViewsFrame) {
    installed("width");
    view.hide();
    show();
    window.resize(260, 100);
    EXPECT_EQ(view.geometry(), QRect(10, 20, 110, 30));
    EXPECT_TRUE(view.isHidden());
}

TEST_F(SpringsAndStrutsInAWindow, LeaveTheWindowItsMinimumSize) {
    installed("width");
    window.setMinimumSize(150, 80);
    show();
    EXPECT_EQ(window.minimumSize(), QSize(150, 80));
    window.resize(10, 10);
    EXPECT_EQ(window.size(), QSize(150, 80));
    EXPECT_EQ(view.width(), 0);
}

TEST_F(SpringsAndStrutsInAWindow, SurviveTheirViews) {
    SpringsAndStruts& layout = installed("width");
    delete &view;
    EXPECT_EQ(layout.count(), 0);
    show();
    window.resize(300, 300);
    EXPECT_EQ(layout.count(), 0);
}

TEST(SpringsAndStruts, AreOnlyWhereAViewHasAMaskAndNoOtherLayoutIs) {
    QWidget plain;
    auto* const view = new QWidget(&plain);
    EXPECT_EQ(SpringsAndStruts::install(plain), nullptr);
    view->setProperty("autoresizingMask", "");
    SpringsAndStruts* const layout = SpringsAndStruts::install(plain);
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(SpringsAndStruts::of(&plain), layout);
    EXPECT_EQ(SpringsAndStruts::install(plain), nullptr);

    QWidget lined;
    auto* const lines = new QHBoxLayout(&lined);
    auto* const masked = new QWidget;
    masked->setProperty("autoresizingMask", "width");
    lines->addWidget(masked);
    EXPECT_EQ(SpringsAndStruts::install(lined), nullptr);
    EXPECT_EQ(SpringsAndStruts::of(&lined), nullptr);
    EXPECT_EQ(SpringsAndStruts::of(nullptr), nullptr);
}

TEST(SpringsAndStruts, GoByTheDesignedSizeThatAContainerNames) {
    QWidget page;
    page.resize(33, 44);
    page.setProperty("designedSize", QSize(200, 100));
    auto* const view = new QWidget(&page);
    view->setGeometry(150, 20, 40, 30);
    view->setProperty("autoresizingMask", "leftMargin");
    SpringsAndStruts* const layout = SpringsAndStruts::install(page);
    page.resize(300, 100);
    layout->layOut();
    EXPECT_EQ(view->geometry(), QRect(250, 20, 40, 30));
}

} // namespace
} // namespace plenzo
