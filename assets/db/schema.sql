-- The record of study sessions, one row a session.
--   ymd_sta     'yyyy/mm/dd'           date on which the session started
--   user_name                          who studied
--   hms_sta     'hh:nn:ss'             time at which it started
--   file_name                          the study file's name without folder and extension
--   dt_end      'yyyy/mm/dd hh:nn:ss'  when it ended; null until then
--   num_answer                         answers shown in it; null until it ended
create table t_kotoban (
    ymd_sta    text,
    user_name  text,
    hms_sta    text,
    file_name  text,
    dt_end     text,
    num_answer integer
);

-- Serves the study history: the sessions of one user over a span of days, in their order.
create index i_kotoban_user_start on t_kotoban (user_name, ymd_sta, hms_sta);
