// The platform OS abstraction's task delay.
#pragma once

void MsOS_DelayTask(unsigned int ms);
