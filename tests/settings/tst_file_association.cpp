#include "test_support.h"

#include "platform/file_association.h"

#include <QStandardPaths>

using namespace pw;

class TestFileAssociation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        xdg = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_HOME", xdg->filePath("data").toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", xdg->filePath("config").toLocal8Bit());
        platform.programsStarted.clear();
    }

    void writesTheDesktopEntryIconAndTypes()
    {
        QVERIFY(AssociateFiles(platform));
        const AssociationFiles files = associationFiles();
        QCOMPARE(files.desktopFile, xdg->filePath("data/applications/pagewright.desktop"));
        QCOMPARE(files.mimeApps, xdg->filePath("config/mimeapps.list"));

        const QStringList entry = QString::fromUtf8(fileBytes(files.desktopFile)).split('\n');
        QCOMPARE(entry.first(), QString("[Desktop Entry]"));
        const QString exec = "Exec=\"" + QCoreApplication::applicationFilePath() + "\" %f";
        for (const QString &line : {QStringLiteral("Type=Application"), exec, QStringLiteral("Icon=pagewright"),
                                    QStringLiteral("MimeType=text/html;")})
            QVERIFY2(entry.contains(line), qPrintable(line));

        QCOMPARE(fileBytes(files.icon), fileBytes(":/icons/pagewright.svg"));
        const QByteArray package = fileBytes(files.mimePackage);
        QVERIFY(package.contains("<mime-type type=\"text/html\">"));
        QVERIFY(package.contains("<glob pattern=\"*.shtml\"/>"));
        QCOMPARE(fileBytes(files.mimeApps), QByteArray("[Default Applications]\ntext/html=pagewright.desktop\n"));

        // The caches are refreshed only by the tools that are there, on the user's own folders.
        QList<QStringList> expected;
        for (const auto &[tool, folder] :
             {std::pair{"update-desktop-database", "data/applications"}, {"update-mime-database", "data/mime"}})
            if (const QString path = QStandardPaths::findExecutable(QLatin1String(tool)); !path.isEmpty())
                expected << QStringList{path, xdg->filePath(QLatin1String(folder))};
        QCOMPARE(platform.programsStarted, expected);
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
        QVERIFY(writeFile(mimeApps, before));

        QVERIFY(AssociateFiles(platform));
        QCOMPARE(fileBytes(mimeApps), after);
        QVERIFY(AssociateFiles(platform)); // a second association changes nothing more
        QCOMPARE(fileBytes(mimeApps), after);
    }

private:
    std::unique_ptr<QTemporaryDir> xdg;
    ScriptedPlatform platform;
};

PW_TEST_MAIN(TestFileAssociation)
#include "tst_file_association.moc"
