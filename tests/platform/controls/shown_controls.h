// SPDX-License-Identifier: GPL-3.0-or-later
// Controls on a window, driven as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QTest>
#include <string>
#include <vector>

#include "platform/controls/items/list_view.h"
#include "platform/controls/items/tree_view.h"

inline std::vector<std::string> TextsOf(ListView& list) {
    std::vector<std::string> texts;
    for (int i = 1; i <= list.ListItems().Count(); ++i) {
        texts.push_back(list.ListItems()(i).Text());
    }
    return texts;
}

// A list with three items on a window with the focus, and the signals that it emitted.
class ShownList : public testing::Test {
 protected:
    void SetUp() override {
        list.setObjectName("lsvDesk");
        list.resize(640, 400);
        for (const char* text : {"Alpha", "Beta", "Gamma"}) {
            list.ListItems().Add(std::string("key") + text, text, 1, 1);
        }
        QObject::connect(&list, &ListView::Click, [this] { told.push_back("Click"); });
        QObject::connect(&list, &ListView::DblClick, [this] { told.push_back("DblClick"); });
        QObject::connect(&list, &ListView::MouseUp, [this](int button, QPoint place) {
            told.push_back("MouseUp " + std::to_string(button));
            released = place;
        });
        QObject::connect(&list, &ListView::KeyDown,
                         [this](int code) { told.push_back("KeyDown " + std::to_string(code)); });
        list.show();
        list.activateWindow();
        list.setFocus();
        QApplication::processEvents();
    }

    QWidget* Viewport() { return list.CurrentView()->viewport(); }
    QPoint PlaceOfItem(int index) {
        return list.CurrentView()->visualRect(list.CurrentView()->model()->index(index - 1, 0)).center();
    }
    QPoint BesideAll() { return Viewport()->rect().bottomRight() - QPoint(3, 3); }
    void ClickItem(int index, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(Viewport(), button, Qt::NoModifier, PlaceOfItem(index));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(list.CurrentView(), key, with);
    }
    std::string SelectedText() { return list.HasSelection() ? list.SelectedItem().Text() : "(none)"; }

    ListView list;
    std::vector<std::string> told;
    QPoint released;
};
