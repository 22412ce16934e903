// Completes typed text from a field of a table, through a record set of the host's data library.
#pragma once

#include <string>
#include <vector>

#include "services/late_object_win.h"

namespace kestrelon {

class EntryBox;

/// One record set at most. A failing connection ends it.
class cTextEvents {
 public:
  void Texto_Inicializar(IDispatch* connection, const std::wstring& field,
                         const std::wstring& table);
  /// After Delete and Backspace nothing is completed.
  void Texto_Verificar(short key);
  /// Adds what the first record that begins with the text has more, selected.
  void Texto_AutoCompletar(EntryBox& box);
  void Texto_AtualizarDados();
  void Texto_Finalizar();

  bool is_running() const { return static_cast<bool>(records_); }
  /// The values of the field, in one pass.
  std::vector<std::wstring> values();

 private:
  LateObject records_;
  std::wstring field_;
  bool erased_ = false;
};

}  // namespace kestrelon
