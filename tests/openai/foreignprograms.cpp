#include "foreignprograms.h"

namespace upstream {

namespace {

// Chosen by words of the last message.
const QByteArray shortAnswers = R"json({"fixtures":[
  {"match":{"userMessage":"capital of France"},"response":{"content":"Paris."}},
  {"match":{"userMessage":"play harbour"},"response":{"toolCalls":[
    {"name":"play_media","arguments":{"media_id":"m1","layer_id":2}}]}},
  {"match":{"userMessage":"forbidden"},"response":{"status":401,"error":
    {"message":"Incorrect API key provided.","type":"invalid_request_error","code":"invalid_api_key"}}}
]})json";

// The same, written out whole.
const QByteArray wholeAnswers = R"yaml(rules:
  - path: "/v1/chat/completions"
    match: "contains(body.messages[-1].content, 'capital of France')"
    response:
      status: 200
      content: '{"choices":[{"message":{"role":"assistant","content":"Paris."},"finish_reason":"stop"}]}'
  - path: "/v1/chat/completions"
    match: "contains(body.messages[-1].content, 'play harbour')"
    response:
      status: 200
      content: '{"choices":[{"message":{"role":"assistant","content":null,"tool_calls":[{"id":"call_1","type":"function",
        "function":{"name":"play_media","arguments":"{\"media_id\":\"m1\",\"layer_id\":2}"}}]},
        "finish_reason":"tool_calls"}]}'
  - path: "/v1/chat/completions"
    match: "contains(body.messages[-1].content, 'forbidden')"
    response:
      status: 401
      content: '{"error":{"message":"Incorrect API key provided.","type":"invalid_request_error","param":null,
        "code":"invalid_api_key"}}'
)yaml";

} // namespace

ForeignProgram aimock()
{
    return {QStringLiteral("@copilotkit/aimock@1.43.0"),
            QStringLiteral("@copilotkit/aimock/dist/cli.js"),
            QStringLiteral("answers.json"),
            shortAnswers,
            {QStringLiteral("--host"), QStringLiteral("127.0.0.1"), QStringLiteral("--port"), QStringLiteral("%port"),
             QStringLiteral("--fixtures"), QStringLiteral("%settings"), QStringLiteral("--strict")},
            {}};
}

ForeignProgram mockLlm()
{
    return {QStringLiteral("@dwmkerr/mock-llm@0.1.29"),
            QStringLiteral("@dwmkerr/mock-llm/dist/main.js"),
            QStringLiteral("answers.yaml"),
            wholeAnswers,
            {QStringLiteral("--config"), QStringLiteral("%settings")},
            {QStringLiteral("HOST=127.0.0.1"), QStringLiteral("PORT=%port")}};
}

} // namespace upstream
