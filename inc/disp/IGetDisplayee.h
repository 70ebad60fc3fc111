#pragma once

namespace disp {

class IDisplayee;

// Whatever can hand out the object that draws it.
class IGetDisplayee {
 public:
  virtual IDisplayee* get_displayee() = 0;

 protected:
  ~IGetDisplayee() = default;
};

}  // namespace disp
