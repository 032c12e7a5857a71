// An unexpected message box fails its test under GoogleTest and under Qt Test.

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

struct Case
{
    const char* test;
    int exitStatus;
    const char* told;
};

constexpr int patience = 120000; // Milliseconds.

class Boxes : public testing::TestWithParam<Case>
{
protected:
    static void expectEnd(const QString& program, const QString& choice)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, {choice});
        ASSERT_TRUE(process.waitForFinished(patience));
        const QByteArray told = process.readAll();
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), GetParam().exitStatus) << told.constData();
        EXPECT_TRUE(told.contains(GetParam().told)) << told.constData();
    }
};

TEST_P(Boxes, EndAGoogleTestAsStated)
{
    expectEnd(QStringLiteral(ZOMREL_GTEST_SAMPLE),
              u"--gtest_filter=Boxes."_s + QLatin1String(GetParam().test));
}

TEST_P(Boxes, EndAQtTestAsStated)
{
    expectEnd(QStringLiteral(ZOMREL_QTEST_SAMPLE), QLatin1String(GetParam().test));
}

INSTANTIATE_TEST_SUITE_P(
    All, Boxes,
    testing::Values(Case{"answered", 0, ""}, Case{"taken", 0, ""},
                    Case{"unexpected", 1, "unexpected message box: asked"},
                    Case{"unexpectedAndCleared", 1, "unexpected message box: asked"},
                    Case{"didNotCome", 1, "expected message boxes that did not come: 1"},
                    Case{"unwatched", 1, "message box outside of any RecordedBoxes: asked"},
                    Case{"afterTheTests", 1, "FAIL outside of a test: message box outside"}),
    [](const auto& each) { return each.param.test; });

} // namespace
