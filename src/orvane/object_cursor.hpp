#pragma once

#include <utility>
#include <vector>

#include "tarnsift/session/repository.hpp"

namespace orvane {

/// Walks objects of the repository that were read already.
class ObjectCursor final : public tarnsift::RepositoryCursor {
 public:
  using Object = tarnsift::Ref<tarnsift::RepositoryObject>;
  explicit ObjectCursor(std::vector<Object> objects) : m_objects(std::move(objects)) {}
  bool AtEnd() override { return m_at >= m_objects.size(); }
  Object Current() override { return m_objects.at(m_at); }
  void MoveNext() override { ++m_at; }
  std::size_t Count() override { return m_objects.size(); }

 private:
  std::vector<Object> m_objects;
  std::size_t m_at = 0;
};

} // namespace orvane
