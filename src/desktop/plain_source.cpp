#include "desktop/plain_source.hpp"

#include <QFontDatabase>

#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "tarnsift/session/host.hpp"

namespace desktop {

PlainSource::PlainSource(orvane::Host& host, QWidget* parent) : QPlainTextEdit(parent), m_host(host) {
  setReadOnly(true);
  setLineWrapMode(NoWrap);
  setFrameShape(NoFrame);
  setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  setPlaceholderText(text(Text::NoSource));
  connectWhile(m_host.workspace()->SourceChanged, m_lifetime, [this] { show(); });
}

void PlainSource::show() {
  clear();
  const auto file = m_host.workspace()->SourceFile();
  if (!file) return;
  platform::ignoring([&] {
    const auto lines = tarnsift::theHostFactory().createBarelineBox();
    lines->LoadFile(m_host.base().native(file->Path()));
    QStringList shown;
    for (std::size_t i = 1; i <= lines->LineCount(); ++i)
      shown << text(lines->Line(i));
    setPlainText(shown.join(QLatin1Char('\n')));
  });
}

} // namespace desktop
