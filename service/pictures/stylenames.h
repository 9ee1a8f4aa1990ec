#pragma once

#include <QString>

namespace tavro::assistantservice {

enum class Style {
    Plain,
    PortraitPhotography,
    InkPainting,
    Watercolor,
    FlatIllustration,
    Landscape,
    Printmaking,
    Monet,
    Picasso,
    Rembrandt,
    Matisse,
};

/// The style that the panel calls so, in any of its languages; Plain for any other name.
Style styleNamed(const QString &name);

} // namespace tavro::assistantservice
