// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/ProgramEnd.h"

#include "app/frmMain.h"
#include "base/session.h"
#include "support/ExpectedBoxes.h"

namespace tessel {

namespace {

class EndOfTheSession : public testing::Test {
  protected:
    SessionManager manager(bool interaction) {
        return {[interaction] { return interaction; }, [this] { ++cancelled; }, [this] { ++released; }};
    }

    // Whether the program ends when the desktop tells it to quit.
    bool quits() {
        main.show();
        bool ended = true;
        QTimer::singleShot(0, qApp, [] {
            QEvent quit(QEvent::Quit);
            QApplication::sendEvent(qApp, &quit);
        });
        QTimer alarm;
        QObject::connect(&alarm, &QTimer::timeout, qApp, [&] {
            ended = false;
            QApplication::exit();
        });
        alarm.start(200);
        QApplication::exec();
        return ended;
    }

    ExpectedBoxes boxes;
    frmMain main;
    ProgramEnd end{[this] { return main.mayLeave(); }, [this] { ++left; }};
    int left = 0;
    int cancelled = 0;
    int released = 0;
};

}  // namespace

TEST_F(EndOfTheSession, AsksOnceAndThenLetsGo) {
    boxes.ask(true, kProgramExitQuestion);
    end.commitSession(manager(true));
    EXPECT_EQ(cancelled, 0);
    EXPECT_EQ(released, 1);
    EXPECT_EQ(left, 0) << "the session may still go on";
    EXPECT_TRUE(quits());
    EXPECT_EQ(left, 1);
}

TEST_F(EndOfTheSession, IsNotTheAnswerForASurveyThatWasChangedSince) {
    boxes.ask(true, kProgramExitQuestion);
    end.commitSession(manager(true));
    noteSurveyChange();
    EXPECT_TRUE(quits());
    EXPECT_EQ(left, 0);
}

TEST_F(EndOfTheSession, StopsWhenTheAnswerIsNo) {
    boxes.ask(false, kProgramExitQuestion);
    end.commitSession(manager(true));
    EXPECT_EQ(cancelled, 1);
    boxes.ask(false, kProgramExitQuestion);
    EXPECT_FALSE(quits());
}

TEST_F(EndOfTheSession, AsksNothingWhereThatIsNotAllowedAndNothingOfAnExportedSurvey) {
    end.commitSession(manager(false));
    EXPECT_TRUE(quits());
    EXPECT_EQ(left, 0) << "nobody was asked";
    theSession().DataSaved = true;
    end.commitSession(manager(true));
    EXPECT_EQ(cancelled, 0);
}

TEST_F(EndOfTheSession, IsStoppedWhileTheExitQuestionIsOpen) {
    int questions = 0;
    setMessageResponder([&](const MessageBox&) {
        ++questions;
        end.commitSession(manager(true));
        return false;
    });
    main.show();
    EXPECT_FALSE(main.close());
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(EndOfTheSession, LeavesTheMainWindowItsQuestion) {
    boxes.ask(true, kProgramExitQuestion);
    end.commitSession(manager(true));
    main.show();
    boxes.ask(false, kProgramExitQuestion);
    EXPECT_FALSE(main.close());
}

TEST(ASignal, EndsTheProgramAndTheBoxThatIsOpen) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const ProgramEnd end([] { return false; }, [] {});
        int answers = 0;
        QTimer::singleShot(0, qApp, [&] {
            QTimer::singleShot(50, qApp, [signal] { std::raise(signal); });
            answers += ask(nullptr, u"Really?"_s) ? 0 : 1;
            tell(nullptr, u"This one does not come up any more"_s);
            answers += ask(nullptr, u"Nor this one"_s) ? 0 : 1;
        });
        QApplication::exec();
        EXPECT_EQ(answers, 2);
    }
}

TEST(ASignal, ThatWasIgnoredBeforeIsIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        const ProgramEnd end([] { return true; }, [] {});
        std::raise(SIGHUP);
        EXPECT_EQ(std::signal(SIGHUP, SIG_IGN), SIG_IGN);
    }
    std::signal(SIGHUP, SIG_DFL);
}

}  // namespace tessel
