// The environment of a call that needs a pool but no database.
#pragma once

#include <apr_general.h>
#include <apr_pools.h>
#include <qbobj/env.h>

#include <cstdlib>

namespace qbobj_test
{

class PoolEnv
{
  public:
    PoolEnv()
    {
        if (apr_initialize() != APR_SUCCESS || apr_pool_create(&handle_.pool, nullptr) != APR_SUCCESS)
            std::abort();
    }
    ~PoolEnv()
    {
        apr_pool_destroy(handle_.pool);
        apr_terminate();
    }
    PoolEnv(const PoolEnv &) = delete;
    PoolEnv &operator=(const PoolEnv &) = delete;

    operator const qbobj_env_t &() const { return env_; }
    qbobj_env_t *get() { return &env_; }
    const qbobj_error_rec_t &err() const { return err_; }
    apr_pool_t *pool() { return handle_.pool; }

  private:
    qbdb_handle_t handle_{};
    qbobj_error_rec_t err_{};
    qbobj_env_t env_{&handle_, &err_};
};

} // namespace qbobj_test
