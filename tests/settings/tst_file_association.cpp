#include "isolated_main.h"

#include "core/association_command.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "platform/file_association.h"
#include "platform/scripted_platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <memory>

using namespace pw;

namespace {

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestFileAssociation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        xdg = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_HOME", xdg->filePath("data").toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", xdg->filePath("config").toLocal8Bit());
        platform = std::make_unique<ScopedScriptedPlatform>();
    }
    void cleanup()
    {
        platform.reset();
        QTRY_VERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void writesTheDesktopEntryIconAndTypes()
    {
        QVERIFY(AssociateFiles());
        const AssociationFiles files = associationFiles();
        QCOMPARE(files.desktopFile, xdg->filePath("data/applications/pagewright.desktop"));
        QCOMPARE(files.mimeApps, xdg->filePath("config/mimeapps.list"));

        const QStringList entry = QString::fromUtf8(readBytes(files.desktopFile)).split('\n');
        QCOMPARE(entry.first(), QString("[Desktop Entry]"));
        QVERIFY(entry.contains("Type=Application"));
        QVERIFY(entry.contains("Exec=\"" + QCoreApplication::applicationFilePath() + "\" %f"));
        QVERIFY(entry.contains("Icon=pagewright"));
        QVERIFY(entry.contains("MimeType=text/html;"));

        QCOMPARE(readBytes(files.icon), readBytes(":/icons/pagewright.svg"));
        QVERIFY(!readBytes(files.icon).isEmpty());
        const QByteArray package = readBytes(files.mimePackage);
        QVERIFY(package.contains("<mime-type type=\"text/html\">"));
        QVERIFY(package.contains("<glob pattern=\"*.shtml\"/>"));
        QCOMPARE(readBytes(files.mimeApps), QByteArray("[Default Applications]\ntext/html=pagewright.desktop\n"));

        // The caches are refreshed only by the tools that are there, on the user's own folders.
        QList<QStringList> expected;
        const QString desktopTool = QStandardPaths::findExecutable("update-desktop-database");
        if (!desktopTool.isEmpty())
            expected << QStringList{desktopTool, xdg->filePath("data/applications")};
        const QString mimeTool = QStandardPaths::findExecutable("update-mime-database");
        if (!mimeTool.isEmpty())
            expected << QStringList{mimeTool, xdg->filePath("data/mime")};
        QCOMPARE((*platform)->programsStarted, expected);
    }

    void mimeDefaults_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("earlier default is replaced, others kept")
            << QByteArray("[Default Applications]\nimage/png=viewer.desktop\ntext/html=other.desktop\n"
                          "\n[Added Associations]\ntext/html=other.desktop;\n")
            << QByteArray("[Default Applications]\nimage/png=viewer.desktop\ntext/html=pagewright.desktop\n"
                          "\n[Added Associations]\ntext/html=other.desktop;\n");
        QTest::newRow("section added behind the others")
            << QByteArray("[Added Associations]\nimage/png=viewer.desktop;\n")
            << QByteArray("[Added Associations]\nimage/png=viewer.desktop;\n\n"
                          "[Default Applications]\ntext/html=pagewright.desktop\n");
        QTest::newRow("doubled default leaves one")
            << QByteArray("[Default Applications]\ntext/html=a.desktop\ntext/html = b.desktop\n")
            << QByteArray("[Default Applications]\ntext/html=pagewright.desktop\n");
    }
    void mimeDefaults()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const QString mimeApps = associationFiles().mimeApps;
        QVERIFY(QDir().mkpath(QFileInfo(mimeApps).absolutePath()));
        QFile file(mimeApps);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(before);
        file.close();

        QVERIFY(AssociateFiles());
        QCOMPARE(readBytes(mimeApps), after);
        QVERIFY(AssociateFiles()); // a second association changes nothing more
        QCOMPARE(readBytes(mimeApps), after);
    }

    void menuCommandSaysSoOnTheStatusLine()
    {
        frmMDIMain main;
        AssociateFilesCommand();
        QVERIFY(QFile::exists(associationFiles().desktopFile));
        QCOMPARE(StatusText(), QString(" Pagewright is now associated with *.htm, *.html, *.shtml."));
    }

private:
    std::unique_ptr<QTemporaryDir> xdg;
    std::unique_ptr<ScopedScriptedPlatform> platform;
};

PW_ISOLATED_TEST_MAIN(TestFileAssociation)
#include "tst_file_association.moc"
