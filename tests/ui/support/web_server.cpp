#include "tests/ui/support/web_server.h"

#include <QTcpSocket>

namespace tessaril {

WebServer::WebServer() {
  listen(QHostAddress::LocalHost);
  connect(this, &QTcpServer::newConnection, this, &WebServer::Serve);
}

QString WebServer::operator/(const std::string& path) const {
  return QString("http://127.0.0.1:%1/%2").arg(serverPort()).arg(QString::fromStdString(path));
}

void WebServer::Serve() {
  QTcpSocket* const socket = nextPendingConnection();
  connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
  connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
    if (!socket->canReadLine()) return;
    const std::string path = socket->readAll().split(' ').value(1).toStdString();
    asked.push_back(path);
    if (path == "/never") return;
    const auto found = answers.find(path);
    const Answer answer = found != answers.end() ? found->second : Answer{.page = "", .status = "404 No"};
    const std::string text =
        "HTTP/1.1 " + answer.status + "\r\nConnection: close\r\nContent-Type: " + answer.type +
        "\r\nContent-Length: " + std::to_string(answer.page.size()) + "\r\n\r\n" + answer.page;
    socket->write(text.data(), static_cast<qint64>(text.size() - answer.left_out));
    if (answer.left_out > 0) return;
    socket->disconnectFromHost();
  });
}

}  // namespace tessaril
