CREATE TABLE ACCOUNTS (
    ACCT_NO         CHAR(10)       NOT NULL,
    CUST_ID         INTEGER        NOT NULL,
    ACCT_TYPE       CHAR(2)        NOT NULL,
    BALANCE         DECIMAL(13,2)  NOT NULL,
    OPENED          DATE           NOT NULL,
    PRIMARY KEY (ACCT_NO)
);
CREATE TABLE PAYMENTS (
    PAY_ID          DECIMAL(10)    NOT NULL,
    ACCT_NO         CHAR(10)       NOT NULL,
    AMOUNT          DECIMAL(13,2)  NOT NULL,
    VALUE_DATE      DATE           NOT NULL,
    PRIMARY KEY (PAY_ID)
);
