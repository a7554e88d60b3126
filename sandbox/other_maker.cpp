#include "other_maker.h"

#include "wish.h"

namespace sandbox {

namespace {

void appendNumber(QByteArray& bytes, quint32 value) {
  for (int shift = 0; shift < 32; shift += 8) bytes.append(char(value >> shift & 0xff));
}

QByteArray emptyScene() {
  QByteArray text = R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[]}]})";
  while (text.size() % 4 != 0) text.append(' ');
  QByteArray bytes = "glTF";
  appendNumber(bytes, 2);
  appendNumber(bytes, quint32(20 + text.size()));
  appendNumber(bytes, quint32(text.size()));
  return bytes + "JSON" + text;
}

}  // namespace

Made makeSolid(const WorkOrder& order) {
  MadeFile file;
  file.field = QStringLiteral("model_glb");
  file.bytes = emptyScene();
  file.extension = QStringLiteral("glb");
  return {{file}, {{QStringLiteral("seed"), order.seed}}};
}

Made sayWords(const WorkOrder& order) {
  const QString answer = QStringLiteral("You said: %1").arg(wordsOf(order.input));
  return {{}, {{QStringLiteral("output"), answer}, {QStringLiteral("text"), answer}}};
}

}  // namespace sandbox
