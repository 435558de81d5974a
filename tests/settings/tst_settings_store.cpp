#include "isolated_main.h"

#include "core/app_state.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "platform/file_association.h"
#include "platform/message_box.h"
#include "platform/scripted_platform.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QToolBar>

#include <functional>
#include <memory>

using namespace pw;

using Probe = std::function<QVariant()>;
Q_DECLARE_METATYPE(Probe)

namespace {

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void writeText(const QString &path, const QString &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text.toUtf8());
}

FunctionKeyRecord keyRecord(const QString &front, const QString &follow, qint16 cursor)
{
    FunctionKeyRecord r;
    r.Active = true;
    r.FrontTag = FixedWidthText(front);
    r.FCRLF = -1;
    r.FollowTag = FixedWidthText(follow);
    r.PCRLF = 1;
    r.PreserveText = false;
    r.CursorPosition = cursor;
    return r;
}

} // namespace

class TestSettingsStore : public QObject
{
    Q_OBJECT

private:
    // One run of the program as far as the settings go: a main window, loaded from the store.
    void startRun()
    {
        ResetFontClasses();
        FunctionKeys = {};
        PreviousEntries = {};
        History = {};
        main = std::make_unique<frmMDIMain>();
        LoadSettings(*main);
    }
    QString settingsFile() const { return dir->filePath(QStringLiteral("Tessaline/Pagewright.ini")); }

    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<QTemporaryDir> xdg;
    std::unique_ptr<ScopedScriptedPlatform> platform;
    std::unique_ptr<frmMDIMain> main;

private Q_SLOTS:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        xdg = std::make_unique<QTemporaryDir>();
        QSettings::setPath(SettingsStore::format(), QSettings::UserScope, dir->path());
        qputenv("XDG_DATA_HOME", xdg->filePath(QStringLiteral("data")).toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", xdg->filePath(QStringLiteral("config")).toLocal8Bit());
        platform = std::make_unique<ScopedScriptedPlatform>();
    }
    void cleanup()
    {
        main.reset();
        platform.reset();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void emptyStoreGivesFirstRunDefaults()
    {
        (*platform)->answers.enqueue(MsgAnswer::No);
        startRun();

        QCOMPARE((*platform)->messages.size(), 1);
        const ScriptedPlatform::Message question = (*platform)->messages.first();
        QCOMPARE(question.text, QString("Would you like Pagewright to be\r\n"
                                        "associated with the following files?\r\n"
                                        "\r\n"
                                        ".htm, .html, .shtml\r\n"
                                        "\r\n"
                                        "You will not be asked again.  You can\r\n"
                                        "associate these files with Pagewright\r\n"
                                        "at any time by selecting Associate from\r\n"
                                        "the Options menu."));
        QCOMPARE(question.style, 52);
        QCOMPARE(question.title, AppTitle());
        QVERIFY(!QFile::exists(associationFiles().desktopFile)); // answered No

        QVERIFY(main->isMaximized());
        const Options &o = main->options();
        QVERIFY(o.isChecked(Option::Highlight));
        QVERIFY(o.isChecked(Option::UHTML));
        QVERIFY(o.isChecked(Option::Toolbar));
        QVERIFY(o.isChecked(Option::AddTemplate));
        QVERIFY(!o.isChecked(Option::AutoSave));
        QVERIFY(!o.isChecked(Option::LockFiles));
        QVERIFY(!o.isChecked(Option::SiteMap));
        QVERIFY(!o.isChecked(Option::MaximizeDocs));
        QVERIFY(!main->Toolbar1->isHidden());
        QVERIFY(!main->Toolbar2->isHidden());
        QCOMPARE(main->Text->BackColor(), 0xFFFFFF);
        QCOMPARE(TextFont, (FontClass{0, "Arial", 8, false, false}));
        QCOMPARE(CommentFont, (FontClass{0, "Arial", 8, false, false}));
        QCOMPARE(HtmlFont, (FontClass{0, "Arial", 8, true, false}));
        for (const FunctionKeyRecord &key : FunctionKeys)
            QCOMPARE(key, FunctionKeyRecord{});
        QCOMPARE(FunctionKeys[0].FrontTag, QString(30, ' '));
        for (const QStringList &list : PreviousEntries.lists)
            QVERIFY(list.isEmpty());
        QCOMPARE(History, HistoryPaths{});
    }

    void firstRunQuestionIsAskedOnce()
    {
        (*platform)->answers.enqueue(MsgAnswer::Yes);
        startRun();
        QCOMPARE((*platform)->messages.size(), 1);
        QVERIFY(QFile::exists(associationFiles().desktopFile)); // answered Yes
        QVERIFY(SaveSettings(*main));
        main.reset();

        startRun();
        QCOMPARE((*platform)->messages.size(), 1);
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
        Options &o = main->options();
        for (Option option : {Option::Highlight, Option::UHTML, Option::Toolbar, Option::LockFiles,
                              Option::SiteMap, Option::MaximizeDocs, Option::AutoSave, Option::AddTemplate})
            o.toggle(option);
        main->Text->setBackColor(0x00C0FF);
        HtmlFont = {0x800000, "Courier New", 12, false, true};
        TextFont = {0x123456, "Times New Roman", 10, true, false};
        CommentFont = {0x008000, "Verdana", 9, true, true};
        FunctionKeys[0] = keyRecord("<B>", "</B>", 2);
        FunctionKeys[11] = keyRecord("<A HREF=\"x\">", "</A>", 0);
        PreviousEntries[PreviousKind::Files] = {"/home/u/site/index.html", "/home/u/site/a b.htm"};
        PreviousEntries[PreviousKind::Textures] = {"paper.gif"};
        PreviousEntries[PreviousKind::URLs] = {"http://a.example/", "b.html#top", "C:\\web\\c.htm"};
        PreviousEntries[PreviousKind::Images] = {"logo.gif"};
        PreviousEntries[PreviousKind::ExtraTags] = {"LINK=\"#0000FF\"", " leading blank"};
        History = {"/home/u/site/index.html", "/home/u/pics/a.gif", "/home/u/site/b.html", "/usr/bin/browser"};
        QVERIFY(SaveSettings(*main));

        const FontClass html = HtmlFont, text = TextFont, comment = CommentFont;
        const auto keys = FunctionKeys;
        const PreviousLists lists = PreviousEntries;
        const HistoryPaths history = History;
        main.reset();
        startRun();

        QCOMPARE((*platform)->messages.size(), 1); // the first run's question only
        QVERIFY(!main->isMaximized() && !main->isMinimized());
        QCOMPARE(main->pos(), QPoint(40, 30));
        QCOMPARE(main->size(), QSize(700, 500));
        QVERIFY(!main->options().isChecked(Option::Highlight));
        QVERIFY(!main->options().isChecked(Option::UHTML));
        QVERIFY(!main->options().isChecked(Option::Toolbar));
        QVERIFY(main->options().isChecked(Option::LockFiles));
        QVERIFY(main->options().isChecked(Option::SiteMap));
        QVERIFY(main->options().isChecked(Option::MaximizeDocs));
        QVERIFY(main->options().isChecked(Option::AutoSave));
        QVERIFY(!main->options().isChecked(Option::AddTemplate));
        QVERIFY(main->Toolbar1->isHidden());
        QVERIFY(main->Toolbar2->isHidden());
        QCOMPARE(main->Text->BackColor(), 0x00C0FF);
        QCOMPARE(HtmlFont, html);
        QCOMPARE(TextFont, text);
        QCOMPARE(CommentFont, comment);
        QCOMPARE(FunctionKeys, keys);
        for (int k = 0; k < PreviousKindCount; ++k)
            QCOMPARE(PreviousEntries.lists[k], lists.lists[k]);
        QCOMPARE(History, history);
    }

    void sectionsAreWrittenAsNamed()
    {
        startRun();
        main->setWindowState(Qt::WindowNoState);
        FunctionKeys[2] = keyRecord("<B>", "</B>", 2);
        PreviousEntries[PreviousKind::ExtraTags] = {"TEXT=\"#000000\""};
        QVERIFY(SaveSettings(*main));
        const QString ini = readText(settingsFile());
        QVERIFY2(ini.contains("[Costume Keys\\F03_Key]\n"
                              "Active=True\n"
                              "CursorPosition=2\n"
                              "FCRLF=-1\n"
                              "FollowTag=\"</B>                          \"\n"
                              "FrontTag=\"<B>                           \"\n"
                              "PCRLF=1\n"
                              "PreserveText=False\n"),
                 qPrintable(ini));
        QVERIFY(ini.contains("[Fonts\\HTML Font]\nBold=True\nColor=0\nItalic=False\nName=Arial\nSize=8\n"));
        QVERIFY(ini.contains("[Previous\\Extra Tags]\n01=TEXT=\"#000000\"\n"));
        QVERIFY(ini.contains("[WinState]\nAddTemplate=True\nAutoSave=False\nBackcolor=16777215\n"));
        QVERIFY(ini.contains("\nState=0\n"));
        QVERIFY(ini.contains("\nWidth=7920\nheight=6630\n"));
    }

    void maximisedEndKeepsTheLastNormalPlace()
    {
        QVERIFY(QDir().mkpath(dir->filePath("Tessaline")));
        writeText(settingsFile(), "[WinState]\nState=0\nTop=1500\nLeft=3000\nWidth=9000\nheight=7500\n");
        startRun();
        QCOMPARE(main->pos(), QPoint(200, 100));
        main->showMaximized();
        QTRY_VERIFY(main->pos() != QPoint(200, 100)); // the maximised window stands elsewhere
        QVERIFY(SaveSettings(*main));
        main.reset();

        startRun();
        QVERIFY(main->isMaximized());
        QCOMPARE(main->normalGeometry(), QRect(200, 100, 600, 500));
        const QString ini = readText(settingsFile());
        QVERIFY(ini.contains("State=2\n"));
        QVERIFY(ini.contains("Top=1500\n"));
    }

    void keysOfOtherOwners()
    {
        SettingsStore store;
        const WindowPlacement centred = store.resourceWinState(QRect(0, 20, 800, 600));
        QCOMPARE(centred, (WindowPlacement{300 + (9000 - 4650) * 0.4, (12000 - 3030) / 2.0, 3030, 4650}));

        store.setResourceWinState({150, 300, 4000, 5000});
        store.writeString(Setting::SiteMapPath, "/home/u/site");
        QVERIFY(store.sync());
        const SettingsStore again;
        QCOMPARE(again.resourceWinState(QRect(0, 0, 800, 600)), (WindowPlacement{150, 300, 4000, 5000}));
        QCOMPARE(again.readString(Setting::SiteMapPath), QString("/home/u/site"));
    }

    void savedList_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QStringList>("saved");
        QTest::newRow("emptied list") << QStringList{} << QStringList{};
        QTest::newRow("stops at the first empty entry") << QStringList{"a.htm", "", "b.htm"}
                                                        << QStringList{"a.htm"};
        QStringList twelve;
        for (int i = 1; i <= 12; ++i)
            twelve << QString("page%1.htm").arg(i);
        QTest::newRow("no more than ten") << twelve << twelve.mid(0, 10);
    }
    void savedList()
    {
        QFETCH(QStringList, entries);
        QFETCH(QStringList, saved);
        startRun();
        PreviousEntries[PreviousKind::URLs] = QStringList{"old1", "old2", "old3", "old4"};
        PreviousEntries[PreviousKind::Images] = QStringList{"keep.gif"};
        QVERIFY(SaveSettings(*main));
        PreviousEntries[PreviousKind::URLs] = entries;
        QVERIFY(SaveSettings(*main));

        QSettings ini(SettingsStore::format(), QSettings::UserScope, "Tessaline", "Pagewright");
        ini.beginGroup("Previous");
        QCOMPARE(ini.childGroups().contains("URLs"), !saved.isEmpty());
        QVERIFY(ini.childGroups().contains("Images"));
        ini.endGroup();
        QCOMPARE(readText(settingsFile()).contains("[Previous\\URLs]"), !saved.isEmpty());
        QCOMPARE(SettingsStore().list(PreviousKind::URLs), saved);
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
        writeText(settingsFile(), "; written by hand\n[" + section + "]\n" + line + "\n");
        QCOMPARE(probe(), expected);
    }

    void unwritableSettingsAreReportedOnce()
    {
        // A plain file where the settings folder should be: no one, root included, can write there.
        writeText(dir->filePath("blocked"), "x");
        QSettings::setPath(SettingsStore::format(), QSettings::UserScope, dir->filePath("blocked"));
        (*platform)->answers.enqueue(MsgAnswer::No);
        startRun();
        QVERIFY(!SaveSettings(*main));

        QCOMPARE((*platform)->messages.size(), 2);
        const ScriptedPlatform::Message report = (*platform)->messages.last();
        QCOMPARE(report.style, 48);
        QCOMPARE(report.title, AppTitle());
        QVERIFY2(report.text.contains(dir->filePath("blocked")), qPrintable(report.text));
    }
};

PW_ISOLATED_TEST_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
