// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Guarded.h"

#include "base/run_time_error.h"
#include "support/ExpectedBoxes.h"

namespace tessel {

TEST(RunTimeErrors, InASlotAreShownWithTheirDescription) {
    ExpectedBoxes boxes;
    QPushButton button;
    const std::pair<std::function<void()>, QString> failures[] = {
        {[] { throw RunTimeError::overflow(); }, u"Overflow"_s},
        {[] { throw RunTimeError::divisionByZero(); }, u"Division by zero"_s},
        {[] { throw RunTimeError::subscriptOutOfRange(); }, u"Subscript out of range"_s},
        {[] { throw RunTimeError::file("/a/b.dat", "cannot be read", "No such file or directory"); },
         u"/a/b.dat cannot be read: No such file or directory"_s},
        {[] {
             noteSurveyChange();
             throw std::bad_alloc();
         },
         u"Out of memory\nThe survey has been changed as asked; what shows it may not have followed."_s},
        {[] { throw std::bad_alloc(); }, u"Out of memory\nThe survey is as it was."_s},
    };
    for (const auto& [action, text] : failures) {
        const auto connection =
            QObject::connect(&button, &QPushButton::clicked, &button, guarded(&button, action));
        boxes.tell(text);
        QTest::mouseClick(&button, Qt::LeftButton);
        QObject::disconnect(connection);
    }
}

TEST(RunTimeErrors, ThatLeaveAnEventHandlerDoNotEndTheProgram) {
    struct Failing : QObject {
        bool event(QEvent*) override { throw RunTimeError::overflow(); }
    };
    ExpectedBoxes boxes;
    boxes.tell(u"Overflow"_s);
    Failing object;
    QEvent event(QEvent::User);
    EXPECT_TRUE(QCoreApplication::sendEvent(&object, &event));
}

TEST(TheHourglass, IsTakenOffHoweverTheWorkEnds) {
    QWidget window;
    {
        Hourglass hourglass(&window);
        EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
    }
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
    EXPECT_THROW(
        {
            Hourglass hourglass(&window);
            throw RunTimeError::overflow();
        },
        RunTimeError);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

}  // namespace tessel
