#pragma once

#include "openai/upstreamaddress.h"

#include <QByteArray>
#include <QSize>
#include <QVector>

#include <chrono>

namespace tavro::assistantservice {

/// A server that has text models.
struct ChatSettings {
    UpstreamAddress address;
    /// Empty: no key is sent.
    QByteArray key;
    /// Empty: the only one that the server has.
    QString model;
    /// Take the place of `model` for questions with the deep model or online search switched on; empty: `model` stays.
    QString deepModel;
    QString searchModel;
    /// False: the model is offered no tools, and playback requests are understood by rules.
    bool tools = true;
    std::chrono::milliseconds limit{60000};
    /// What the waits before another try are made of.
    std::chrono::milliseconds retryUnit{1000};
};

/// A server that has picture models.
struct PictureSettings {
    UpstreamAddress address;
    QByteArray key;
    QString model;
    /// What the server is asked for: the one nearest in shape to what the user wants. Empty: just that.
    QVector<QSize> sizes;
    std::chrono::milliseconds limit{60000};
};

} // namespace tavro::assistantservice
