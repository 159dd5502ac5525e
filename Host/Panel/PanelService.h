#pragma once

#include "Host/Panel/Gate.h"
#include "Host/Panel/HttpServer.h"
#include "Host/Panel/PanelSession.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/** A panel's page, and what it asks for, over HTTP. */
class PanelService : public HttpService {
public:
    /// Both outlive the service. `schema` tells of the parameters, as JSON.
    PanelService(const AccessToken& token, PanelSession& session, std::string schema)
        : mGate(token), mSession(session), mSchema(std::move(schema)) {}

    std::optional<std::size_t> mostBody(const HttpHead& head) override;
    HttpReply answer(const HttpRequest& request) override;

private:
    Gate mGate;
    PanelSession& mSession;
    std::string mSchema;
};

} // namespace Kerovane::Host
