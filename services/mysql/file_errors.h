// The numbers and words by which the hosts' language tells errors.
#pragma once

#include <string>

#include "services/mysql/db_connection.h"

namespace kestrelon {

inline constexpr long kInvalidArgument = 5;
inline constexpr long kOutOfMemory = 7;
inline constexpr long kUserInterrupt = 18;
inline constexpr long kFileNotFound = 53;
inline constexpr long kDeviceError = 57;
inline constexpr long kDiskFull = 61;
inline constexpr long kInputPastEnd = 62;
inline constexpr long kPathAccess = 75;
inline constexpr long kBadFormat = 321;

inline DbError path_access_error(const std::wstring& path) {
  return {kPathAccess, L"Erro de acesso ao caminho/arquivo: " + path};
}

inline DbError read_error() {
  return {kDeviceError, L"Erro de leitura no arquivo."};
}

inline DbError out_of_memory_error() {
  return {kOutOfMemory, L"Memória insuficiente."};
}

inline DbError cancelled_error() {
  return {kUserInterrupt, L"Operação cancelada pelo usuário."};
}

}  // namespace kestrelon
