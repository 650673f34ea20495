#ifndef TESSARIL_TESTS_UI_SUPPORT_WEB_SERVER_H_
#define TESSARIL_TESTS_UI_SUPPORT_WEB_SERVER_H_

#include <QTcpServer>
#include <map>
#include <string>
#include <vector>

namespace tessaril {

/// A web server on the loopback address, as long as it lives.
class WebServer : public QTcpServer {
 public:
  WebServer();

  /// The address of a path, without "/" before it.
  QString operator/(const std::string& path) const;

  /// What it answers, by path. For "/never" it never does.
  struct Answer {
    std::string page;
    std::string type = "text/html";
    std::string status = "200 Yes";  // further lines of the head may follow
    std::size_t left_out = 0;        // bytes at the end that never come
  };
  std::map<std::string, Answer> answers;
  std::vector<std::string> asked;  // paths

 private:
  void Serve();
};

}  // namespace tessaril

#endif  // TESSARIL_TESTS_UI_SUPPORT_WEB_SERVER_H_
