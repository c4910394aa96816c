#pragma once

// While one lives, the nothrow form of new succeeds `successes` more times and then yields null.
class FailingNew {
  public:
    explicit FailingNew(int successes);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};
