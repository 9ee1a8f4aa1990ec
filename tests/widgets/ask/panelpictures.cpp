#include "panelstates.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

using namespace tavro::testsupport;

// Draws the panel in each state and language: panelpictures FOLDER [LANGUAGE]. The scale comes from QT_SCALE_FACTOR.
namespace {

bool draw(const PanelState &state, const SampleTexts &texts, const QDir &folder)
{
    SamplePanel panel(texts);
    state.enter(panel);
    const QImage picture = panel.picture();
    const QString file = QStringLiteral("%1-%2-%3x.png")
                             .arg(QLatin1String(state.name), QLatin1String(texts.language))
                             .arg(picture.devicePixelRatio());
    if (picture.save(folder.filePath(file)))
        return true;
    std::fprintf(stderr, "panelpictures: cannot write %s\n", qPrintable(folder.filePath(file)));
    return false;
}

bool isWanted(const PanelState &state, const SampleTexts &texts, const QString &language)
{
    const bool isFirst = &texts == &sampleTexts().front();
    return (language.isEmpty() || language == QLatin1String(texts.language))
        && (isFirst || !state.looksAlikeInAllLanguages);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    const QDir folder(QApplication::arguments().value(1, QStringLiteral(".")));
    folder.mkpath(QStringLiteral("."));
    bool isDone = true;
    for (const SampleTexts &texts : sampleTexts()) {
        for (const PanelState &state : panelStates()) {
            if (isWanted(state, texts, QApplication::arguments().value(2)))
                isDone = draw(state, texts, folder) && isDone;
        }
    }
    return isDone ? 0 : 1;
}
