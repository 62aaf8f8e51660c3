// Whole documents: opened, every compound shown and painted, closed as they were.

#include "window/canvas/canvas.h"
#include "window/drive/driver.h"
#include "windowFixture.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <cstdlib>

namespace shadingTest {

class WholeDocuments : public Window {
protected:
    void showAll(const QString& path)
    {
        SCOPED_TRACE(path.toStdString());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        shading::Workspace& workspace = open(path.toStdString());
        showBelow(workspace, workspace.document().getRootNode());
        EXPECT_EQ(workspace.history().undoCount(), 0);
        EXPECT_FALSE(window.isWindowModified());
        EXPECT_EQ(bytesOf(workspace), file.readAll().toStdString());
        window.removeDocument(window.view());
        EXPECT_EQ(refusals, QStringList());
    }

    void showBelow(shading::Workspace& workspace, const shading::NodePtr& node)
    {
        const shading::CompoundPtr compound = node->getAsCompound();
        workspace.enter(compound);
        shading::waitUntilShown(window);
        shading::Canvas& canvas = window.view()->canvas();
        ASSERT_TRUE(canvas.scene());
        EXPECT_EQ(canvas.compound(), compound);
        EXPECT_EQ(canvas.scene()->nodeCount(), compound->nodes().size());
        EXPECT_FALSE(canvas.grab().isNull());
        for (ZEL::Node* const inner : compound->nodes()) {
            const std::string path = inner->getFullPathName().getName();
            EXPECT_TRUE(canvas.scene()->nodeRect(path).has_value()) << path;
        }
        for (ZEL::Node* const inner : compound->nodes()) {
            if (inner->isCompound())
                showBelow(workspace, inner);
        }
    }
};

TEST_F(WholeDocuments, OfTheExamplesAreShownAndLeftAsTheyAre)
{
    const QDir examples(QString::fromStdString(exampleFolder()));
    const QStringList names = examples.entryList({"*.mtlx"});
    ASSERT_FALSE(names.empty());
    for (const QString& name : names)
        showAll(examples.filePath(name));
}

TEST_F(WholeDocuments, OfAFolderOfChoiceAreShownAndLeftAsTheyAre)
{
    const char* const chosen = std::getenv("SHADING_EXTRA_DOCUMENTS");
    if (!chosen)
        GTEST_SKIP() << "SHADING_EXTRA_DOCUMENTS names no folder";
    QDirIterator files(chosen, {"*.mtlx"}, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        showAll(files.next());
        ++count;
    }
    EXPECT_GT(count, 0);
}

} // namespace shadingTest
