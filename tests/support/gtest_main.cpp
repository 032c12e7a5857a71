#include <QCoreApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
