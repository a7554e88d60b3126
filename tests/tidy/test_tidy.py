"""The checks of tools/tidy, each on a snippet that breaks the rule and on one that keeps it."""
import importlib.machinery
import importlib.util
import unittest
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent.parent
loader = importlib.machinery.SourceFileLoader("tidy", str(TOP / "tools" / "tidy"))
tidy = importlib.util.module_from_spec(importlib.util.spec_from_loader("tidy", loader))
loader.exec_module(tidy)


class Tidy(unittest.TestCase):
    def breaks(self, rule, path, text):
        self.assertNotEqual(list(rule(path, text)), [], text)

    def keeps(self, rule, path, text):
        self.assertEqual(list(rule(path, text)), [], text)

    def test_an_include_may_not_point_up_the_order_of_rooms(self):
        rule = tidy.includes_point_down
        self.breaks(rule, "src/core/a.cpp", '#include "generation/provider.h"')
        self.breaks(rule, "src/shell/a.cpp", '#include "shell/views/theme.h"')
        self.keeps(rule, "src/generation/a.cpp", '#include "core/records.h"\n#include "generation/b.h"')
        self.keeps(rule, "src/shell/views/a.cpp", '#include "shell/gallery_presenter.h"')

    def test_the_sandbox_includes_no_room(self):
        self.breaks(tidy.sandbox_stands_alone, "sandbox/a.cpp", '#include "base/ids.h"')
        self.keeps(tidy.sandbox_stands_alone, "sandbox/a.cpp", '#include "ledger.h"\n#include <QObject>')

    def test_widgets_stay_in_the_views(self):
        self.breaks(tidy.widgets_stay_in_views, "src/shell/a.cpp", "#include <QWidget>")
        self.keeps(tidy.widgets_stay_in_views, "src/shell/views/a.cpp", "#include <QWidget>")
        self.keeps(tidy.widgets_stay_in_views, "src/shell/a.cpp", "#include <QImage>")

    def test_nested_event_loops_are_found(self):
        rule = tidy.no_nested_event_loops
        self.breaks(rule, "src/core/a.cpp", "QEventLoop loop;")
        self.breaks(rule, "src/core/a.cpp", "dialog.exec();")
        self.breaks(rule, "src/generation/a.cpp", "QCoro::waitFor(task);")
        self.keeps(rule, "src/app/main.cpp", "return application.exec();")
        self.keeps(rule, "src/core/a.cpp", "// a QEventLoop would run other code here")

    def test_durable_data_is_written_in_one_place(self):
        rule = tidy.durable_writes_in_one_place
        self.breaks(rule, "src/core/a.cpp", "QSaveFile file(path);")
        self.breaks(rule, "src/core/a.cpp", "file.open(QIODevice::WriteOnly);")
        self.breaks(rule, "src/core/a.cpp", "QSaveFile file(path); // not durable: no")
        self.keeps(rule, "src/core/a.cpp", "buffer.open(QIODevice::WriteOnly);  // not durable: memory")
        self.keeps(rule, "src/base/durable_file.cpp", "::rename(a, b);")

    def test_only_one_place_may_post(self):
        self.breaks(tidy.one_place_spends_money, "src/catalogue/a.cpp", "network->post(request, body);")
        self.keeps(tidy.one_place_spends_money, "src/platform/http_client.cpp", "network.post(request, &device);")
        self.keeps(tidy.one_place_spends_money, "src/catalogue/a.cpp", "transport->postOnce(request, stop);")

    def test_banned_words_in_names_are_found(self):
        rule = tidy.names_say_what_they_are
        self.breaks(rule, "src/core/a.h", "class FileManager {};")
        self.breaks(rule, "src/core/a.h", "namespace StringUtils {}")
        self.keeps(rule, "src/core/a.h", "QNetworkAccessManager network;")

    def test_the_project_speaks_of_itself_alone(self):
        rule = tidy.speaks_of_itself
        self.breaks(rule, "src/core/a.cpp", "// measured in /Us" "ers/ann/sorvan")
        self.breaks(rule, "docs/a.md", "see /ro" "ot/notes.txt")
        self.keeps(rule, "src/core/a.cpp", "// below ${HOME}/Pictures, never in /tmp")

    def test_q_object_stands_on_a_line_of_its_own(self):
        self.breaks(tidy.q_object_on_its_own_line, "src/core/a.h", "class A : QObject { Q_OBJECT")
        self.keeps(tidy.q_object_on_its_own_line, "src/core/a.h", "class A : QObject {\n  Q_OBJECT\n")

    def test_a_lambda_with_captures_is_no_coroutine(self):
        rule = tidy.no_capturing_coroutine_lambdas
        self.breaks(rule, "src/core/a.cpp", "auto f = [this](int a) -> Task<int> {\n co_return a;\n};")
        self.keeps(rule, "src/core/a.cpp", "auto f = [](int a) -> Task<int> {\n co_return a;\n};")
        self.keeps(rule, "src/core/a.cpp", "auto f = [this](int a) -> Task<int> { return g(this, a); };")

    def test_a_breach_names_its_line(self):
        found = tidy.breaches("src/core/a.cpp", 'int a;\n#include "shell/x.h"\n')
        self.assertEqual([line for line, _ in found], [2])

    def test_the_whole_house_is_tidy(self):
        self.assertEqual(tidy.main([]), 0)


if __name__ == "__main__":
    unittest.main()
