#include "isolated_main.h"

#include "core/about_box.h"
#include "core/app_state.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "platform/scripted_platform.h"

#include <QLabel>
#include <QPushButton>

#include <memory>

using namespace pw;

class TestAboutBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        platform = std::make_unique<ScopedScriptedPlatform>();
        main = std::make_unique<frmMDIMain>();
        History = {};
    }
    void cleanup()
    {
        main.reset();
        platform.reset();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void showsProductVersionAndHomePage()
    {
        frmTitle2 *box = ShowAboutBox();
        QVERIFY(box->isVisible());
        QCOMPARE(box->windowModality(), Qt::ApplicationModal);
        QCOMPARE(ShowAboutBox(), box); // one instance
        QCOMPARE(box->findChild<QLabel *>("Label1")->text(), "Tessaline Pagewright " + VersionText());
        QCOMPARE(box->findChild<QLabel *>("Label3")->text(), QString("Web site: "));
        QCOMPARE(box->findChild<QLabel *>("Label6")->text(), QString("https://pagewright.example.org/"));
        QCOMPARE(box->findChild<QPushButton *>("Command1")->text(), QString("OK"));
    }

    void homePageClick_data()
    {
        QTest::addColumn<QString>("browser");
        QTest::addColumn<QList<QStringList>>("started");
        QTest::newRow("chosen browser gets the address")
            << "/usr/bin/browser" << QList<QStringList>{{"/usr/bin/browser", "https://pagewright.example.org/"}};
        QTest::newRow("no browser fails quietly") << "" << QList<QStringList>{};
    }
    void homePageClick()
    {
        QFETCH(QString, browser);
        QFETCH(QList<QStringList>, started);
        History.Browser = browser;
        QPointer<frmTitle2> box = ShowAboutBox();
        QTest::mouseClick(box->Label6, Qt::LeftButton);
        QCOMPARE((*platform)->programsStarted, started);
        QVERIFY((*platform)->messages.isEmpty());
        QVERIFY(box && box->isVisible());
    }

    void okClosesTheBox()
    {
        QPointer<frmTitle2> box = ShowAboutBox();
        QTest::mouseClick(box->Command1, Qt::LeftButton);
        QTRY_VERIFY(!box);
    }

private:
    std::unique_ptr<ScopedScriptedPlatform> platform;
    std::unique_ptr<frmMDIMain> main;
};

PW_ISOLATED_TEST_MAIN(TestAboutBox)
#include "tst_about_box.moc"
