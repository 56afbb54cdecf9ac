#include "feed/presence.h"

#include "core/program.h"
#include "feed/http_client.h"
#include "feed/service.h"
#include "settings/conffrm.h"

namespace borvane {

void SendOnlineMark() {
  try {
    const std::string version = VersionDigits();
    if (HttpClientFree() != flag_false)
      conffrm->Inet1.OpenURL(ServiceAddress("cmd=setonline&macid=" + Module1->MacID + "&AppVersion=" + version),
                             Inet::as_text);
  } catch (const RuntimeError &) {
    // Nothing depends on the service being there.
  }
}

std::string GetUsersOnline() {
  try {
    // Meant (whoson-version-has-a-blank): the version should be the same text in all requests. Here it is a number's
    // own text with its leading blank, and the service knows the request by it.
    const std::string version = " " + VersionDigits();
    if (HttpClientFree() == flag_false)
      return {};
    std::string answer = conffrm->Inet1.OpenURL(
        ServiceAddress("cmd=whoson&macid=" + Module1->MacID + "&AppVersion=" + version), Inet::as_text);

    const bool is_error_page = answer.find('<') != std::string::npos;
    return is_error_page ? "0" : answer;
  } catch (const RuntimeError &) {
    return {};
  }
}

}  // namespace borvane
