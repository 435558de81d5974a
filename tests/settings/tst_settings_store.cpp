#include "test_support.h"

#include "core/app_state.h"
#include "core/settings_store.h"
#include "platform/file_association.h"
#include "platform/message_box.h"

#include <QSettings>

#include <functional>

using namespace pw;

using Probe = std::function<QVariant()>;
Q_DECLARE_METATYPE(Probe)

namespace {

FunctionKeyRecord keyRecord(const QString &front, const QString &follow, qint16 cursor)
{
    return {true, FixedWidthText(front), -1, FixedWidthText(follow), 1, false, cursor};
}

} // namespace

class TestSettingsStore : public QObject
{
    Q_OBJECT

private:
    // One run of the program as far as the settings go: a main window, loaded from the store.
    void startRun()
    {
        main = std::make_unique<frmMDIMain>(*platform);
        LoadSettings(*main, ws());
    }
    Workspace &ws() { return main->workspace(); }
    QString settingsFile() const { return dir->filePath(QStringLiteral("Tessaline/Pagewright.ini")); }

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<ScriptedPlatform> platform;
    std::unique_ptr<frmMDIMain> main;

private Q_SLOTS:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        QSettings::setPath(SettingsStore::format(), QSettings::UserScope, dir->path());
        qputenv("XDG_DATA_HOME", dir->filePath(QStringLiteral("data")).toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", dir->filePath(QStringLiteral("config")).toLocal8Bit());
        platform = std::make_unique<ScriptedPlatform>();
    }
    void cleanup()
    {
        main.reset();
        platform.reset();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void firstRunAsksOnceAndStartsMaximised_data()
    {
        QTest::addColumn<int>("answer");
        QTest::newRow("associate") << int(MsgAnswer::Yes);
        QTest::newRow("not now") << int(MsgAnswer::No);
    }
    void firstRunAsksOnceAndStartsMaximised()
    {
        QFETCH(int, answer);
        platform->answers.enqueue(answer);
        startRun();
        QCOMPARE(platform->messages.size(), 1);
        QCOMPARE(platform->messages[0].text, FirstRunQuestion());
        QCOMPARE(platform->messages[0].style, 52);
        QCOMPARE(QFile::exists(associationFiles().desktopFile), answer == MsgAnswer::Yes);
        QVERIFY(main->isMaximized());
        QVERIFY(SaveSettings(*main, ws()));
        main.reset();

        startRun();
        QCOMPARE(platform->messages.size(), 1);
        QVERIFY(main->isMaximized());
        QCOMPARE(QSettings(SettingsStore::format(), QSettings::UserScope, "Tessaline").value("Pagewright/Version"),
                 QVariant(VersionText()));
    }

    void everyKeySurvivesARun()
    {
        startRun();
        main->setWindowState(Qt::WindowNoState);
        main->move(40, 30);
        main->resize(700, 500);
        for (int i = 0; i < OptionCount; ++i)
            ws().options.toggle(Option(i));
        ws().backColor = 0x00C0FF;
        ws().fonts = {{0x123456, "Times New Roman", 10, true, false}, {0x800000, "Courier New", 12, false, true},
                      {0x008000, "Verdana", 9, true, true}};
        ws().functionKeys[0] = keyRecord("<B>", "</B>", 2);
        ws().functionKeys[11] = keyRecord("<A HREF=\"x\">", "</A>", 0);
        ws().history = {"/home/u/site/index.html", "/home/u/pics/a.gif", "/home/u/site/b.html", "/usr/bin/browser"};
        ws().previous[PreviousKind::URLs] = {"old1", "old2", "old3"};
        QVERIFY(SaveSettings(*main, ws()));
        const QStringList twelve = QString("1 2 3 4 5 6 7 8 9 10 11 12").split(' ');
        PreviousLists lists;
        lists[PreviousKind::Files] = {"/home/u/site/index.html", "/home/u/site/a b.htm", "C:\\web\\c.htm"};
        lists[PreviousKind::Textures] = twelve;                    // no more than ten are kept
        lists[PreviousKind::URLs] = {};                            // an emptied list leaves no section
        lists[PreviousKind::Images] = {"logo.gif", "", "b.gif"};   // kept up to the first empty entry
        lists[PreviousKind::ExtraTags] = {"LINK=\"#0000FF\"", " leading blank"};
        ws().previous = lists;
        QVERIFY(SaveSettings(*main, ws()));
        // Sections are written as named.
        const QString ini = QString::fromUtf8(fileBytes(settingsFile()));
        QVERIFY2(ini.contains("[Costume Keys\\F01_Key]\nActive=True\nCursorPosition=2\nFCRLF=-1\n"
                              "FollowTag=\"</B>                          \"\n"
                              "FrontTag=\"<B>                           \"\nPCRLF=1\nPreserveText=False\n"),
                 qPrintable(ini));
        QVERIFY(ini.contains("[Fonts\\HTML Font]\nBold=False\nColor=8388608\nItalic=True\n"
                             "Name=Courier New\nSize=12\n"));
        QVERIFY(ini.contains("[Previous\\Extra Tags]\n01=LINK=\"#0000FF\"\n02=\" leading blank\"\n"));
        QVERIFY(ini.contains("[WinState]\nAddTemplate=False\nAutoSave=True\nBackcolor=49407\n"));
        QVERIFY(ini.contains("\nState=0\n") && ini.contains("\nWidth=10500\nheight=7500\n"));
        QVERIFY(!ini.contains("[Previous\\URLs]"));

        const auto saved = std::tuple(ws().fonts, ws().functionKeys, ws().history);
        main.reset();
        startRun();

        QCOMPARE(platform->messages.size(), 1); // the first run's question only
        QVERIFY(!main->isMaximized() && !main->isMinimized());
        QCOMPARE(main->pos(), QPoint(40, 30));
        QCOMPARE(main->size(), QSize(700, 500));
        for (int i = 0; i < OptionCount; ++i)
            QVERIFY2(ws().options.isChecked(Option(i)) != DefaultOption(Option(i)), optionItemName(Option(i)));
        QCOMPARE(ws().backColor, 0x00C0FF);
        QVERIFY(std::tuple(ws().fonts, ws().functionKeys, ws().history) == saved);
        lists[PreviousKind::Textures] = twelve.mid(0, 10);
        lists[PreviousKind::Images] = {"logo.gif"};
        for (int k = 0; k < PreviousKindCount; ++k)
            QCOMPARE(ws().previous.lists[k], lists.lists[k]);
    }

    void maximisedEndKeepsTheLastNormalPlace()
    {
        QVERIFY(QDir().mkpath(dir->filePath("Tessaline")));
        QVERIFY(writeFile(settingsFile(), "[WinState]\nState=0\nTop=1500\nLeft=3000\nWidth=9000\nheight=7500\n"));
        startRun();
        QCOMPARE(main->pos(), QPoint(200, 100));
        main->showMaximized();
        QTRY_VERIFY(main->pos() != QPoint(200, 100)); // the maximised window stands elsewhere
        QVERIFY(SaveSettings(*main, ws()));
        main.reset();

        startRun();
        QVERIFY(main->isMaximized());
        QCOMPARE(main->normalGeometry(), QRect(200, 100, 600, 500));
        QVERIFY(fileBytes(settingsFile()).contains("State=2\n") && fileBytes(settingsFile()).contains("Top=1500\n"));
    }

    void handWrittenValueFallsBackToDefault_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("line");
        QTest::addColumn<Probe>("probe");
        QTest::addColumn<QVariant>("expected");
        const auto font = [] { return QVariant::fromValue(SettingsStore().font(FontSection::Html).Size); };
        QTest::newRow("state not a number") << "WinState" << "State=big"
            << Probe([] { return SettingsStore().readInt(Setting::State); }) << QVariant(-2);
        QTest::newRow("boolean neither true nor false") << "WinState" << "Highlight=Maybe"
            << Probe([] { return SettingsStore().readBool(Setting::Highlight); }) << QVariant(true);
        QTest::newRow("boolean in lower case") << "WinState" << "AutoSave=true"
            << Probe([] { return SettingsStore().readBool(Setting::AutoSave); }) << QVariant(true);
        QTest::newRow("exponent is not a number") << "WinState" << "Width=1e3"
            << Probe([] { return SettingsStore().readFloat(Setting::Width); }) << QVariant(7920.0);
        QTest::newRow("blanks around a number") << "WinState" << "Top =  1500 "
            << Probe([] { return SettingsStore().readFloat(Setting::Top); }) << QVariant(1500.0);
        QTest::newRow("colour of letters") << "WinState" << "Backcolor=white"
            << Probe([] { return SettingsStore().readInt(Setting::Backcolor); }) << QVariant(16777215);
        QTest::newRow("size beyond 16 bits") << "Fonts\\HTML Font" << "Size=40000" << Probe(font)
            << QVariant::fromValue(qint16(8));
        QTest::newRow("size with a fraction rounds") << "Fonts\\HTML Font" << "Size=10.5" << Probe(font)
            << QVariant::fromValue(qint16(10));
        QTest::newRow("cursor position not a number") << "Costume Keys\\F05_Key" << "CursorPosition=end"
            << Probe([] { return QVariant::fromValue(SettingsStore().functionKey(4).CursorPosition); })
            << QVariant::fromValue(qint16(1));
        QTest::newRow("front tag longer than its field") << "Costume Keys\\F01_Key"
            << "FrontTag=<TABLE BORDER=1 CELLPADDING=2 CELLSPACING=2>"
            << Probe([] { return SettingsStore().functionKey(0).FrontTag; })
            << QVariant("<TABLE BORDER=1 CELLPADDING=2 ");
    }
    void handWrittenValueFallsBackToDefault()
    {
        QFETCH(QString, section);
        QFETCH(QString, line);
        QFETCH(Probe, probe);
        QFETCH(QVariant, expected);
        QVERIFY(QDir().mkpath(dir->filePath("Tessaline")));
        QVERIFY(writeFile(settingsFile(), ("; written by hand\n[" + section + "]\n" + line + "\n").toUtf8()));
        QCOMPARE(probe(), expected);
    }

    void unwritableSettingsAreReportedOnce()
    {
        // A plain file where the settings folder should be: no one, root included, can write there.
        QVERIFY(writeFile(dir->filePath("blocked"), "x"));
        QSettings::setPath(SettingsStore::format(), QSettings::UserScope, dir->filePath("blocked"));
        platform->answers.enqueue(MsgAnswer::No);
        startRun();
        QVERIFY(!SaveSettings(*main, ws()));

        QCOMPARE(platform->messages.size(), 2);
        QCOMPARE(platform->messages[1].style, 48);
        QVERIFY(platform->messages[1].text.contains(dir->filePath("blocked")));
    }
};

PW_TEST_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
