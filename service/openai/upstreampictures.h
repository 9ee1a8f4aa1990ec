#pragma once

#include "engine.h"
#include "openai/picturereply.h"
#include "openai/upstreamclient.h"
#include "openai/upstreamsettings.h"

namespace tavro::assistantservice {

/// Has pictures made by a picture model. May be used by several threads. A request is made once: it may cost money.
class UpstreamPictures {
public:
    explicit UpstreamPictures(PictureSettings settings);

    PictureResult draw(const PictureRequest &request, const std::atomic<bool> &cancelled) const;

    const UpstreamClient &client() const { return m_client; }

private:
    UpstreamReply ask(const PictureRequest &request, const Patience &patience) const;
    static ServiceError fetch(PictureReply &made, AddressClass upstream, const Patience &patience);

    const PictureSettings m_settings;
    const UpstreamClient m_client;
};

} // namespace tavro::assistantservice
