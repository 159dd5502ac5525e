#pragma once

#include "Host/Panel/Gate.h"
#include "Host/Panel/HttpServer.h"
#include "Host/Panel/PanelSession.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/** Serves the panel's page and answers its requests. */
class PanelService : public HttpService {
public:
    /// `token` and `session` must outlive the service. `schema` describes the parameters as JSON.
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
